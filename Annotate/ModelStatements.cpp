#include "Annotate/ModelStatements.h"

#include "Annotate/AsciiCase.h"
#include "Annotate/ModelFile.h"

#include <algorithm>
#include <array>

namespace annotate {

namespace {

using Kind = StatementKind;

/// Sorted by their names in upper case.
constexpr std::array statementClasses{
    StatementClass{"IfcAppliedValue", Kind::Referenced},
    StatementClass{"IfcClassificationReference", Kind::Referenced},
    StatementClass{"IfcComplexProperty", Kind::ComplexProperty},
    StatementClass{"IfcContextDependentUnit", Kind::ContextUnit},
    StatementClass{"IfcConversionBasedUnit", Kind::ConversionUnit},
    StatementClass{"IfcConversionBasedUnitWithOffset", Kind::ConversionUnit},
    StatementClass{"IfcCostValue", Kind::Referenced},
    StatementClass{"IfcDerivedUnit", Kind::DerivedUnit},
    StatementClass{"IfcDerivedUnitElement", Kind::DerivedUnitElement},
    StatementClass{"IfcDocumentReference", Kind::Referenced},
    StatementClass{"IfcDoorLiningProperties", Kind::PredefinedSet},
    StatementClass{"IfcDoorPanelProperties", Kind::PredefinedSet},
    StatementClass{"IfcElectricalBaseProperties", Kind::PredefinedSet},
    StatementClass{"IfcElementQuantity", Kind::QuantitySet},
    StatementClass{"IfcEnergyProperties", Kind::PredefinedSet},
    StatementClass{"IfcExtendedMaterialProperties", Kind::ExtendedMaterialProperties},
    StatementClass{"IfcExternallyDefinedHatchStyle", Kind::Referenced},
    StatementClass{"IfcExternallyDefinedSurfaceStyle", Kind::Referenced},
    StatementClass{"IfcExternallyDefinedTextFont", Kind::Referenced},
    StatementClass{"IfcGeneralMaterialProperties", Kind::MaterialAttributes},
    StatementClass{"IfcHygroscopicMaterialProperties", Kind::MaterialAttributes},
    StatementClass{"IfcIrregularTimeSeries", Kind::Referenced},
    StatementClass{"IfcLibraryReference", Kind::Referenced},
    StatementClass{"IfcMaterial", Kind::Referenced},
    StatementClass{"IfcMaterialConstituent", Kind::Referenced},
    StatementClass{"IfcMaterialConstituentSet", Kind::Referenced},
    StatementClass{"IfcMaterialLayer", Kind::Referenced},
    StatementClass{"IfcMaterialLayerSet", Kind::Referenced},
    StatementClass{"IfcMaterialLayerSetUsage", Kind::Referenced},
    StatementClass{"IfcMaterialLayerWithOffsets", Kind::Referenced},
    StatementClass{"IfcMaterialList", Kind::Referenced},
    StatementClass{"IfcMaterialProfile", Kind::Referenced},
    StatementClass{"IfcMaterialProfileSet", Kind::Referenced},
    StatementClass{"IfcMaterialProfileSetUsage", Kind::Referenced},
    StatementClass{"IfcMaterialProfileSetUsageTapering", Kind::Referenced},
    StatementClass{"IfcMaterialProfileWithOffsets", Kind::Referenced},
    StatementClass{"IfcMaterialProperties", Kind::MaterialProperties},
    StatementClass{"IfcMeasureWithUnit", Kind::MeasureWithUnit},
    StatementClass{"IfcMechanicalConcreteMaterialProperties", Kind::MaterialAttributes},
    StatementClass{"IfcMechanicalMaterialProperties", Kind::MaterialAttributes},
    StatementClass{"IfcMechanicalSteelMaterialProperties", Kind::MaterialAttributes},
    StatementClass{"IfcMonetaryUnit", Kind::MonetaryUnit},
    StatementClass{"IfcOpticalMaterialProperties", Kind::MaterialAttributes},
    StatementClass{"IfcOrganization", Kind::Referenced},
    StatementClass{"IfcPermeableCoveringProperties", Kind::PredefinedSet},
    StatementClass{"IfcPerson", Kind::Referenced},
    StatementClass{"IfcPersonAndOrganization", Kind::Referenced},
    StatementClass{"IfcPhysicalComplexQuantity", Kind::ComplexQuantity},
    StatementClass{"IfcPostalAddress", Kind::Referenced},
    StatementClass{"IfcProfileProperties", Kind::ProfileProperties},
    StatementClass{"IfcPropertyBoundedValue", Kind::BoundedValue},
    StatementClass{"IfcPropertyEnumeratedValue", Kind::EnumeratedValue},
    StatementClass{"IfcPropertyEnumeration", Kind::Enumeration},
    StatementClass{"IfcPropertyListValue", Kind::ListValue},
    StatementClass{"IfcPropertyReferenceValue", Kind::ReferenceValue},
    StatementClass{"IfcPropertySet", Kind::PropertySet},
    StatementClass{"IfcPropertySingleValue", Kind::SingleValue},
    StatementClass{"IfcPropertyTableValue", Kind::TableValue},
    StatementClass{"IfcQuantityArea", Kind::Quantity},
    StatementClass{"IfcQuantityCount", Kind::Quantity},
    StatementClass{"IfcQuantityLength", Kind::Quantity},
    StatementClass{"IfcQuantityNumber", Kind::Quantity},
    StatementClass{"IfcQuantityTime", Kind::Quantity},
    StatementClass{"IfcQuantityVolume", Kind::Quantity},
    StatementClass{"IfcQuantityWeight", Kind::Quantity},
    StatementClass{"IfcRegularTimeSeries", Kind::Referenced},
    StatementClass{"IfcReinforcementDefinitionProperties", Kind::PredefinedSet},
    StatementClass{"IfcRelAggregates", Kind::Aggregates},
    StatementClass{"IfcRelAssociatesMaterial", Kind::AssociatesMaterial},
    StatementClass{"IfcRelContainedInSpatialStructure", Kind::Contained},
    StatementClass{"IfcRelDefinesByObject", Kind::DefinesByObject},
    StatementClass{"IfcRelDefinesByProperties", Kind::DefinesByProperties},
    StatementClass{"IfcRelDefinesByType", Kind::DefinesByType},
    StatementClass{"IfcRelFillsElement", Kind::Fills},
    StatementClass{"IfcRelNests", Kind::Nests},
    StatementClass{"IfcRelOverridesProperties", Kind::DefinesByProperties},
    StatementClass{"IfcRelProjectsElement", Kind::Projects},
    StatementClass{"IfcRelVoidsElement", Kind::Voids},
    StatementClass{"IfcServiceLifeFactor", Kind::PredefinedSet},
    StatementClass{"IfcSIUnit", Kind::SiUnit},
    StatementClass{"IfcSpaceThermalLoadProperties", Kind::PredefinedSet},
    StatementClass{"IfcTable", Kind::Referenced},
    StatementClass{"IfcTelecomAddress", Kind::Referenced},
    StatementClass{"IfcThermalMaterialProperties", Kind::MaterialAttributes},
    StatementClass{"IfcUnitAssignment", Kind::UnitAssignment},
    StatementClass{"IfcWindowLiningProperties", Kind::PredefinedSet},
    StatementClass{"IfcWindowPanelProperties", Kind::PredefinedSet},
};

constexpr std::size_t blockSize = 1024UL * 1024;

constexpr bool precedes(std::string_view a, std::string_view b) {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char left, char right) { return toUpper(left) < toUpper(right); });
}

static_assert(std::is_sorted(statementClasses.begin(), statementClasses.end(),
                             [](const auto& a, const auto& b) { return precedes(a.name, b.name); }));
static_assert(statementClasses.size() < 256);

} // namespace

const StatementClass* StatementClass::find(const ModelInstance& instance) {
    const auto* const found =
        std::lower_bound(statementClasses.begin(), statementClasses.end(), instance.keyword,
                         [](const auto& row, auto keyword) { return precedes(row.name, keyword); });
    return found == statementClasses.end() || precedes(instance.keyword, found->name) ? nullptr : found;
}

void ModelStatements::add(std::uint64_t id, const StatementClass& statementClass, std::string_view text) {
    if (blocks.empty() || blocks.back().capacity() - blocks.back().size() < text.size()) {
        blocks.emplace_back().reserve(std::max(blockSize, text.size()));
    }
    std::string& block = blocks.back();
    const auto row = static_cast<std::uint8_t>(&statementClass - statementClasses.data());
    entries.push_back(
        {id, static_cast<std::uint32_t>(blocks.size() - 1), static_cast<std::uint32_t>(block.size()) & 0xffffffU, row});
    block += text;
}

void ModelStatements::sort() {
    const auto isBefore = [](const Entry& a, const Entry& b) { return a.id < b.id; };
    if (!std::is_sorted(entries.begin(), entries.end(), isBefore)) {
        std::stable_sort(entries.begin(), entries.end(), isBefore);
    }
}

ModelStatements::Statement ModelStatements::find(std::uint64_t id) const {
    static constexpr StatementClass none;
    const auto found = std::lower_bound(entries.begin(), entries.end(), id,
                                        [](const Entry& entry, std::uint64_t wanted) { return entry.id < wanted; });
    if (found == entries.end() || found->id != id) {
        return {&none, {}};
    }
    return {&classOf(*found), std::string_view(blocks[found->block]).substr(found->place)};
}

const StatementClass& ModelStatements::classOf(const Entry& entry) {
    return statementClasses[entry.row];
}

} // namespace annotate
