// A sequence of writes, against a plain account of what each property reads back as (a bounded one: three parts). A
// line of the input is a write: a digit for the property, one for the form of the write, one for the number of rows, a
// letter for the type of the value, and the value.

#include "IfcVersionMapping/SchemaDefinitions.h"
#include "Require.h"
#include "Support/OverlayReading.h"

#include <algorithm>
#include <array>
#include <map>
#include <sstream>

using namespace orv;
using domain::shared::enhancementsforreferencemodel::PsetData;
using ifc::def::xml::Def;
using ifc::def::xml::PropertyKind;
using object::PropertyValue;
using tests::readingOf;
using tests::takenAs;

namespace {

constexpr std::array<std::pair<const char*, const char*>, 8> properties{
    {{"Pset_WallCommon", "FireRating"},
     {"Pset_WallCommon", "ThermalTransmittance"},
     {"Pset_WallCommon", "IsExternal"},
     {"Pset_WallCommon", "Status"},
     {"Pset_AirTerminalBoxTypeCommon", "AirPressureRange"},
     {"Pset_Address", "AddressLines"},
     {"Pset_AirTerminalPHistory", "InductionRatio"},
     {"Pset_WallCommon", "status"}}}; // which isn't defined

/// What a property reads back as.
struct Account {
    bool isThere = false;
    std::string value = "0:"; // of a single or an enumerated one
    std::string rows;
};

void writeValue(Account& account, const Def& definition, const PropertyValue& value) {
    const auto* const text = value.getIf<std::string>();
    if (value.isEmpty() || (text != nullptr && text->empty())) {
        return;
    }
    account.isThere = true;
    if (definition.kind == PropertyKind::Single) {
        account.value = takenAs(definition.valueType, value);
    } else if (definition.kind == PropertyKind::Enumerated) {
        account.value = text == nullptr ? "0:" : "5:" + text->substr(0, text->size() - (text->ends_with(';') ? 1 : 0));
    }
}

void writeRows(Account& account, std::size_t count, const std::string& row) {
    for (std::size_t index = 0; !account.isThere && index < count; ++index) {
        account.rows += row;
    }
    account.isThere = account.isThere || count > 0;
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
    auto wall = std::make_shared<fc::core::kernel::FcObjectDefinition>(*fc::IfcClass::find("IfcWall"));
    wall->guid.data1 = 1;
    auto database = std::make_shared<fc::FcShadowDb>();
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
        const auto& [set, name] = properties[choice(0, properties.size())];
        const std::size_t form = choice(1, 4);
        const std::size_t count = choice(2, 3);
        const PropertyValue value = valueOf(line[3], line.substr(4));
        PsetData overlay(false);
        if (form == 0) {
            overlay.setValue(wall->guid, set, name, value);
        } else if (form == 1) {
            overlay.setValue(wall, set, name, value);
        } else if (form == 2) {
            overlay.setValue(wall->guid, set, name, std::vector(count, value));
        } else {
            overlay.setValue(wall->guid, set, name, std::vector(count, std::pair(value, value)));
        }
        Account& account = accounts[name];
        if (const Def* const definition = ifc::findSchemaDefForProperty(set, name)) {
            std::string row = '|' + takenAs(definition->valueType, value);
            if (form < 2) {
                writeValue(account, *definition, value);
            } else if (form == 2) {
                writeRows(account, count, definition->kind == PropertyKind::List ? row : "");
            } else {
                row += '=' + row.substr(1);
                writeRows(account, count, definition->kind == PropertyKind::Table ? row : "");
            }
        }
        const std::string reading = readingOf(wall->guid, set, name);
        const bool areBounds = account.isThere && name == std::string_view("AirPressureRange");
        fuzz::require(areBounds ? std::count(reading.begin(), reading.end(), ';') >= 2
                                : reading == account.value + account.rows,
                      "the property reads back");
    }
    return 0;
}
