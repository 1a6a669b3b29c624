// A sequence of writes, against a plain account of what each property reads back as. A line of the input is a write:
// a digit for the property, one for the form of the write, one for the number of rows, a letter for the type of the
// value, and the value.

#include "Domain/Shared/EnhancementsForReferenceModel/PsetData.h"
#include "FoundationClasses/FcValue.h"
#include "Require.h"

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
    std::string value = "0:";
    std::vector<std::string> rows; // of a list or a table
    std::array<const char*, 3> boundTypes{"IfcReal", "IfcReal", "IfcReal"};
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

void writeBounds(Account& account, std::string parts) {
    std::array<std::string, 3> bounds;
    for (std::size_t index = 0; index < bounds.size(); ++index) {
        if (parts.empty()) {
            account.boundTypes[index] = "";
            continue;
        }
        const std::string part = parts.substr(0, parts.find(';'));
        bounds[index] = takenAs(account.boundTypes[index], part).substr(2);
        parts.erase(0, part.size() + 1);
    }
    account.value = "5:" + bounds[1] + ';' + bounds[0] + ';' + bounds[2];
}

void writeValue(Account& account, const Property& property, const PropertyValue& value) {
    const std::string text = textOf(value);
    if (text.empty() || property.kind == Kind::Undefined) {
        return;
    }
    account.isThere = true;
    const bool isText = value.getIndex() == 5;
    if (property.kind == Kind::Single) {
        account.value = takenAs(property.type, value);
        const double number = std::strtod(account.value.c_str() + 2, nullptr);
        fuzz::require(!account.value.starts_with("4:") || number == std::strtod(text.c_str(), nullptr),
                      "a real is the number that was given");
    } else if (property.kind == Kind::Enumerated) {
        account.value = isText ? "5:" + text.substr(0, text.size() - (text.ends_with(';') ? 1 : 0)) : "0:";
    } else if (property.kind == Kind::Bounded) {
        const bool isBool = value.getIndex() == 3;
        writeBounds(account, isText ? text : isBool ? "" : std::to_string(std::strtod(text.c_str(), nullptr)));
    }
}

void writeRows(Account& account, const Property& property, Kind written, std::size_t count, const std::string& row) {
    if (count > 0 && property.kind != Kind::Undefined && !account.isThere) {
        account.isThere = true;
        account.rows.assign(property.kind == written ? count : 0, row);
        account.value = property.kind == Kind::Bounded ? "5:;;" : "0:";
    }
}

void check(const Account& account, const Guid& id, const std::string& set, const std::string& name) {
    PsetData overlay;
    const char alternative = account.value.front();
    const auto text = overlay.getValueAsString(id, set, name);
    fuzz::require(shown(overlay.getValue(id, set, name)) == account.value, "the value reads back");
    fuzz::require(text.has_value() == (alternative != '0'), "what has a value has a text");
    fuzz::require(text.value_or("") == (alternative == '5' ? account.value.substr(2) : ""), "a text reads back");
    fuzz::require(overlay.getValueAsDouble(id, set, name).has_value() == (alternative == '4'), "a real reads back");
    fuzz::require(overlay.getValueAsBool(id, set, name).has_value() == (alternative == '3'), "a bool reads back");
    std::vector<std::string> rows;
    for (const auto& value : overlay.getListValues(id, set, name)) {
        rows.push_back(shown(value));
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
    auto database = std::make_shared<fc::FcShadowDb>();
    PsetData::getPsetShadowDbReadOnlyCallbackSet([&] { return database; });
    PsetData::getPsetShadowDbReadWriteCallbackSet([&] { return std::pair(database, ScopeGuard()); });
    PsetData::getObjectFromGuidCallbackSet([&](const Guid& id) { return id == wall->guid ? wall : nullptr; });

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
        Account& account = accounts[name];
        PsetData overlay(false);
        overlay.setValue(Guid(), set, name, value); // nobody's
        if (form == 0) {
            overlay.setValue(wall->guid, set, name, value);
            writeValue(account, property, value);
        } else if (form == 1) {
            overlay.setValue(wall, set, name, value);
            writeValue(account, property, value);
        } else if (form == 2) {
            overlay.setValue(wall->guid, set, name, std::vector(count, value));
            writeRows(account, property, Kind::List, count, row);
        } else {
            overlay.setValue(wall->guid, set, name, std::vector(count, std::pair(value, value)));
            writeRows(account, property, Kind::Table, count, row + row);
        }
        check(account, wall->guid, set, name);
    }
    return 0;
}
