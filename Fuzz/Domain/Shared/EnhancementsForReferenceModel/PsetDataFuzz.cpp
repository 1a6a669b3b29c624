// A sequence of writes, against a plain account of what each property reads back as. A line of the input is a write:
// a digit for the property, one for the form of the write, one for the number of rows, a letter for the type of the
// value, and the value.

#include "Domain/Shared/EnhancementsForReferenceModel/PsetData.h"
#include "FoundationClasses/FcValue.h"
#include "Require.h"

#include <algorithm>
#include <array>
#include <map>
#include <sstream>

using namespace orv;
using domain::shared::enhancementsforreferencemodel::PsetData;
using object::PropertyValue;

namespace {

enum class Kind { Single, Enumerated, Bounded, List, Table, Undefined };

struct Property {
    const char* set;
    const char* name;
    Kind kind;
    const char* type;
};

constexpr std::array<Property, 8> properties{{{"Pset_WallCommon", "FireRating", Kind::Single, "IfcLabel"},
                                              {"Pset_WallCommon", "ThermalTransmittance", Kind::Single, "IfcReal"},
                                              {"Pset_WallCommon", "IsExternal", Kind::Single, "IfcBoolean"},
                                              {"Pset_WallCommon", "Status", Kind::Enumerated, ""},
                                              {"Pset_AirTerminalBoxTypeCommon", "AirPressureRange", Kind::Bounded, ""},
                                              {"Pset_Address", "AddressLines", Kind::List, "IfcLabel"},
                                              {"Pset_AirTerminalPHistory", "InductionRatio", Kind::Table, "IfcReal"},
                                              {"Pset_WallCommon", "status", Kind::Undefined, ""}}};

/// What a property reads back as.
struct Account {
    bool isThere = false;
    std::string value = "0:"; // of a single or an enumerated one
    std::vector<std::string> rows;
};

/// The alternative that a value of the type holds once it was given the other, and its text.
std::string takenAs(const char* type, const PropertyValue& given) {
    fc::FcValue value(fc::FcValueType::find(type));
    value.updateValueFromPropertyValue(given);
    return std::to_string(value.getAsPropertyValue().getIndex()) + ':' + value.getAsString(false).value_or("");
}

std::string textOf(const PropertyValue& value) {
    return takenAs("IfcLabel", value).substr(2);
}

std::string shown(const PropertyValue& value) {
    return std::to_string(value.getIndex()) + ':' + textOf(value);
}

void writeValue(Account& account, const Property& property, const PropertyValue& value) {
    const std::string text = textOf(value);
    if (text.empty() || property.kind == Kind::Undefined) {
        return;
    }
    account.isThere = true;
    if (property.kind == Kind::Single) {
        account.value = takenAs(property.type, value);
    } else if (property.kind == Kind::Enumerated) {
        const bool isText = value.getIndex() == 5;
        account.value = isText ? "5:" + text.substr(0, text.size() - (text.ends_with(';') ? 1 : 0)) : "0:";
    }
}

void writeRows(Account& account, const Property& property, Kind written, std::size_t count, const std::string& row) {
    if (count > 0 && property.kind != Kind::Undefined && !account.isThere) {
        account.isThere = true;
        account.rows.assign(property.kind == written ? count : 0, row);
    }
}

void check(const Account& account, const Property& property, const Guid& id) {
    const auto& [set, name, kind, type] = property;
    PsetData overlay;
    const std::string value = shown(overlay.getValue(id, set, name));
    if (kind == Kind::Bounded) {
        fuzz::require(value.starts_with('5') == account.isThere, "bounds are a text");
        fuzz::require(std::count(value.begin(), value.end(), ';') >= (account.isThere ? 2 : 0), "of three parts");
    } else {
        fuzz::require(value == account.value, "the value reads back");
    }
    const auto text = overlay.getValueAsString(id, set, name);
    fuzz::require(text.has_value() == (value != "0:"), "what has a value has a text");
    fuzz::require(text.value_or("") == (value.front() == '5' ? value.substr(2) : ""), "a text reads back");
    fuzz::require(overlay.getValueAsDouble(id, set, name).has_value() == (value.front() == '4'), "a real reads back");
    fuzz::require(overlay.getValueAsBool(id, set, name).has_value() == (value.front() == '3'), "a bool reads back");
    std::vector<std::string> rows;
    for (const auto& each : overlay.getListValues(id, set, name)) {
        rows.push_back(shown(each));
    }
    for (const auto& [defining, defined] : overlay.getTableValues(id, set, name)) {
        rows.push_back(shown(defining) + shown(defined));
    }
    fuzz::require(rows == account.rows, "the rows read back");
}

PropertyValue valueOf(char type, const std::string& text) {
    switch (type) {
    case 'b':
        return text == "true";
    case 'i':
        return static_cast<int>(std::strtol(text.c_str(), nullptr, 10));
    case 'r':
        return std::strtod(text.c_str(), nullptr);
    case 't':
        return text;
    default:
        return {};
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const fuzz::Byte* data, std::size_t size) {
    const auto wall = std::make_shared<fc::core::kernel::FcObjectDefinition>(*fc::IfcClass::find("IfcWall"));
    wall->guid.data1 = 1;
    const auto database = std::make_shared<fc::FcShadowDb>();
    PsetData::getPsetShadowDbReadOnlyCallbackSet([&] { return database; });
    PsetData::getPsetShadowDbReadWriteCallbackSet([&] { return std::pair(database, ScopeGuard()); });
    PsetData::getObjectFromGuidCallbackSet([&](const Guid&) { return wall; });

    std::map<std::string, Account> accounts;
    std::istringstream input(std::string(data, data + size));
    for (std::string line; std::getline(input, line);) {
        line.resize(std::max<std::size_t>(line.size(), 4));
        const auto choice = [&](std::size_t index, std::size_t count) {
            return static_cast<fuzz::Byte>(line[index]) % count;
        };
        const Property& property = properties[choice(0, properties.size())];
        const auto& [set, name, kind, type] = property;
        const std::size_t form = choice(1, 4);
        const std::size_t count = choice(2, 3);
        const PropertyValue value = valueOf(line[3], line.substr(4));
        const std::string row = takenAs(type, value);
        PsetData overlay(false);
        if (form == 0) {
            overlay.setValue(wall->guid, set, name, value);
            writeValue(accounts[name], property, value);
        } else if (form == 1) {
            overlay.setValue(wall, set, name, value);
            writeValue(accounts[name], property, value);
        } else if (form == 2) {
            overlay.setValue(wall->guid, set, name, std::vector(count, value));
            writeRows(accounts[name], property, Kind::List, count, row);
        } else {
            overlay.setValue(wall->guid, set, name, std::vector(count, std::pair(value, value)));
            writeRows(accounts[name], property, Kind::Table, count, row + row);
        }
        check(accounts[name], property, wall->guid);
    }
    return 0;
}
