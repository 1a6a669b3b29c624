#include "Annotate/DirectAttributes.h"

#include <algorithm>
#include <iterator>

namespace annotate {

namespace {

/// Sorted by class and place.
constexpr DirectAttribute attributes[] = {
    // clang-format off
    {"IfcDoorLiningProperties", 4, "LiningDepth", "IfcPositiveLengthMeasure"},
    {"IfcDoorLiningProperties", 5, "LiningThickness", "IfcNonNegativeLengthMeasure"},
    {"IfcDoorLiningProperties", 6, "ThresholdDepth", "IfcPositiveLengthMeasure"},
    {"IfcDoorLiningProperties", 7, "ThresholdThickness", "IfcNonNegativeLengthMeasure"},
    {"IfcDoorLiningProperties", 8, "TransomThickness", "IfcNonNegativeLengthMeasure"},
    {"IfcDoorLiningProperties", 9, "TransomOffset", "IfcLengthMeasure"},
    {"IfcDoorLiningProperties", 10, "LiningOffset", "IfcLengthMeasure"},
    {"IfcDoorLiningProperties", 11, "ThresholdOffset", "IfcLengthMeasure"},
    {"IfcDoorLiningProperties", 12, "CasingThickness", "IfcPositiveLengthMeasure"},
    {"IfcDoorLiningProperties", 13, "CasingDepth", "IfcPositiveLengthMeasure"},
    {"IfcDoorLiningProperties", 15, "LiningToPanelOffsetX", "IfcLengthMeasure"},
    {"IfcDoorLiningProperties", 16, "LiningToPanelOffsetY", "IfcLengthMeasure"},
    {"IfcDoorPanelProperties", 4, "PanelDepth", "IfcPositiveLengthMeasure"},
    {"IfcDoorPanelProperties", 5, "PanelOperation", ""},
    {"IfcDoorPanelProperties", 6, "PanelWidth", "IfcNormalisedRatioMeasure"},
    {"IfcDoorPanelProperties", 7, "PanelPosition", ""},
    {"IfcElectricalBaseProperties", 4, "EnergySequence", ""},
    {"IfcElectricalBaseProperties", 5, "UserDefinedEnergySequence", "IfcLabel"},
    {"IfcElectricalBaseProperties", 6, "ElectricCurrentType", ""},
    {"IfcElectricalBaseProperties", 7, "InputVoltage", "IfcElectricVoltageMeasure"},
    {"IfcElectricalBaseProperties", 8, "InputFrequency", "IfcFrequencyMeasure"},
    {"IfcElectricalBaseProperties", 9, "FullLoadCurrent", "IfcElectricCurrentMeasure"},
    {"IfcElectricalBaseProperties", 10, "MinimumCircuitCurrent", "IfcElectricCurrentMeasure"},
    {"IfcElectricalBaseProperties", 11, "MaximumPowerInput", "IfcPowerMeasure"},
    {"IfcElectricalBaseProperties", 12, "RatedPowerInput", "IfcPowerMeasure"},
    {"IfcElectricalBaseProperties", 13, "InputPhase", "IfcInteger"},
    {"IfcEnergyProperties", 4, "EnergySequence", ""},
    {"IfcEnergyProperties", 5, "UserDefinedEnergySequence", "IfcLabel"},
    {"IfcGeneralMaterialProperties", 1, "MolecularWeight", "IfcMolecularWeightMeasure"},
    {"IfcGeneralMaterialProperties", 2, "Porosity", "IfcNormalisedRatioMeasure"},
    {"IfcGeneralMaterialProperties", 3, "MassDensity", "IfcMassDensityMeasure"},
    {"IfcHygroscopicMaterialProperties", 1, "UpperVaporResistanceFactor", "IfcPositiveRatioMeasure"},
    {"IfcHygroscopicMaterialProperties", 2, "LowerVaporResistanceFactor", "IfcPositiveRatioMeasure"},
    {"IfcHygroscopicMaterialProperties", 3, "IsothermalMoistureCapacity", "IfcIsothermalMoistureCapacityMeasure"},
    {"IfcHygroscopicMaterialProperties", 4, "VaporPermeability", "IfcVaporPermeabilityMeasure"},
    {"IfcHygroscopicMaterialProperties", 5, "MoistureDiffusivity", "IfcMoistureDiffusivityMeasure"},
    {"IfcMechanicalConcreteMaterialProperties", 1, "DynamicViscosity", "IfcDynamicViscosityMeasure"},
    {"IfcMechanicalConcreteMaterialProperties", 2, "YoungModulus", "IfcModulusOfElasticityMeasure"},
    {"IfcMechanicalConcreteMaterialProperties", 3, "ShearModulus", "IfcModulusOfElasticityMeasure"},
    {"IfcMechanicalConcreteMaterialProperties", 4, "PoissonRatio", "IfcPositiveRatioMeasure"},
    {"IfcMechanicalConcreteMaterialProperties", 5, "ThermalExpansionCoefficient", "IfcThermalExpansionCoefficientMeasure"},
    {"IfcMechanicalConcreteMaterialProperties", 6, "CompressiveStrength", "IfcPressureMeasure"},
    {"IfcMechanicalConcreteMaterialProperties", 7, "MaxAggregateSize", "IfcPositiveLengthMeasure"},
    {"IfcMechanicalConcreteMaterialProperties", 8, "AdmixturesDescription", "IfcText"},
    {"IfcMechanicalConcreteMaterialProperties", 9, "Workability", "IfcText"},
    {"IfcMechanicalConcreteMaterialProperties", 10, "ProtectivePoreRatio", "IfcNormalisedRatioMeasure"},
    {"IfcMechanicalConcreteMaterialProperties", 11, "WaterImpermeability", "IfcText"},
    {"IfcMechanicalMaterialProperties", 1, "DynamicViscosity", "IfcDynamicViscosityMeasure"},
    {"IfcMechanicalMaterialProperties", 2, "YoungModulus", "IfcModulusOfElasticityMeasure"},
    {"IfcMechanicalMaterialProperties", 3, "ShearModulus", "IfcModulusOfElasticityMeasure"},
    {"IfcMechanicalMaterialProperties", 4, "PoissonRatio", "IfcPositiveRatioMeasure"},
    {"IfcMechanicalMaterialProperties", 5, "ThermalExpansionCoefficient", "IfcThermalExpansionCoefficientMeasure"},
    {"IfcMechanicalSteelMaterialProperties", 1, "DynamicViscosity", "IfcDynamicViscosityMeasure"},
    {"IfcMechanicalSteelMaterialProperties", 2, "YoungModulus", "IfcModulusOfElasticityMeasure"},
    {"IfcMechanicalSteelMaterialProperties", 3, "ShearModulus", "IfcModulusOfElasticityMeasure"},
    {"IfcMechanicalSteelMaterialProperties", 4, "PoissonRatio", "IfcPositiveRatioMeasure"},
    {"IfcMechanicalSteelMaterialProperties", 5, "ThermalExpansionCoefficient", "IfcThermalExpansionCoefficientMeasure"},
    {"IfcMechanicalSteelMaterialProperties", 6, "YieldStress", "IfcPressureMeasure"},
    {"IfcMechanicalSteelMaterialProperties", 7, "UltimateStress", "IfcPressureMeasure"},
    {"IfcMechanicalSteelMaterialProperties", 8, "UltimateStrain", "IfcPositiveRatioMeasure"},
    {"IfcMechanicalSteelMaterialProperties", 9, "HardeningModule", "IfcModulusOfElasticityMeasure"},
    {"IfcMechanicalSteelMaterialProperties", 10, "ProportionalStress", "IfcPressureMeasure"},
    {"IfcMechanicalSteelMaterialProperties", 11, "PlasticStrain", "IfcPositiveRatioMeasure"},
    {"IfcOpticalMaterialProperties", 1, "VisibleTransmittance", "IfcPositiveRatioMeasure"},
    {"IfcOpticalMaterialProperties", 2, "SolarTransmittance", "IfcPositiveRatioMeasure"},
    {"IfcOpticalMaterialProperties", 3, "ThermalIrTransmittance", "IfcPositiveRatioMeasure"},
    {"IfcOpticalMaterialProperties", 4, "ThermalIrEmissivityBack", "IfcPositiveRatioMeasure"},
    {"IfcOpticalMaterialProperties", 5, "ThermalIrEmissivityFront", "IfcPositiveRatioMeasure"},
    {"IfcOpticalMaterialProperties", 6, "VisibleReflectanceBack", "IfcPositiveRatioMeasure"},
    {"IfcOpticalMaterialProperties", 7, "VisibleReflectanceFront", "IfcPositiveRatioMeasure"},
    {"IfcOpticalMaterialProperties", 8, "SolarReflectanceFront", "IfcPositiveRatioMeasure"},
    {"IfcOpticalMaterialProperties", 9, "SolarReflectanceBack", "IfcPositiveRatioMeasure"},
    {"IfcPermeableCoveringProperties", 4, "OperationType", ""},
    {"IfcPermeableCoveringProperties", 5, "PanelPosition", ""},
    {"IfcPermeableCoveringProperties", 6, "FrameDepth", "IfcPositiveLengthMeasure"},
    {"IfcPermeableCoveringProperties", 7, "FrameThickness", "IfcPositiveLengthMeasure"},
    {"IfcReinforcementDefinitionProperties", 4, "DefinitionType", "IfcLabel"},
    {"IfcServiceLifeFactor", 4, "PredefinedType", ""},
    {"IfcServiceLifeFactor", 5, "UpperValue", ""},
    {"IfcServiceLifeFactor", 6, "MostUsedValue", ""},
    {"IfcServiceLifeFactor", 7, "LowerValue", ""},
    {"IfcSpaceThermalLoadProperties", 4, "ApplicableValueRatio", "IfcPositiveRatioMeasure"},
    {"IfcSpaceThermalLoadProperties", 5, "ThermalLoadSource", ""},
    {"IfcSpaceThermalLoadProperties", 6, "PropertySource", ""},
    {"IfcSpaceThermalLoadProperties", 7, "SourceDescription", "IfcText"},
    {"IfcSpaceThermalLoadProperties", 8, "MaximumValue", "IfcPowerMeasure"},
    {"IfcSpaceThermalLoadProperties", 9, "MinimumValue", "IfcPowerMeasure"},
    {"IfcSpaceThermalLoadProperties", 11, "UserDefinedThermalLoadSource", "IfcLabel"},
    {"IfcSpaceThermalLoadProperties", 12, "UserDefinedPropertySource", "IfcLabel"},
    {"IfcSpaceThermalLoadProperties", 13, "ThermalLoadType", ""},
    {"IfcThermalMaterialProperties", 1, "SpecificHeatCapacity", "IfcSpecificHeatCapacityMeasure"},
    {"IfcThermalMaterialProperties", 2, "BoilingPoint", "IfcThermodynamicTemperatureMeasure"},
    {"IfcThermalMaterialProperties", 3, "FreezingPoint", "IfcThermodynamicTemperatureMeasure"},
    {"IfcThermalMaterialProperties", 4, "ThermalConductivity", "IfcThermalConductivityMeasure"},
    {"IfcWindowLiningProperties", 4, "LiningDepth", "IfcPositiveLengthMeasure"},
    {"IfcWindowLiningProperties", 5, "LiningThickness", "IfcNonNegativeLengthMeasure"},
    {"IfcWindowLiningProperties", 6, "TransomThickness", "IfcNonNegativeLengthMeasure"},
    {"IfcWindowLiningProperties", 7, "MullionThickness", "IfcNonNegativeLengthMeasure"},
    {"IfcWindowLiningProperties", 8, "FirstTransomOffset", "IfcNormalisedRatioMeasure"},
    {"IfcWindowLiningProperties", 9, "SecondTransomOffset", "IfcNormalisedRatioMeasure"},
    {"IfcWindowLiningProperties", 10, "FirstMullionOffset", "IfcNormalisedRatioMeasure"},
    {"IfcWindowLiningProperties", 11, "SecondMullionOffset", "IfcNormalisedRatioMeasure"},
    {"IfcWindowLiningProperties", 13, "LiningOffset", "IfcLengthMeasure"},
    {"IfcWindowLiningProperties", 14, "LiningToPanelOffsetX", "IfcLengthMeasure"},
    {"IfcWindowLiningProperties", 15, "LiningToPanelOffsetY", "IfcLengthMeasure"},
    {"IfcWindowPanelProperties", 4, "OperationType", ""},
    {"IfcWindowPanelProperties", 5, "PanelPosition", ""},
    {"IfcWindowPanelProperties", 6, "FrameDepth", "IfcPositiveLengthMeasure"},
    {"IfcWindowPanelProperties", 7, "FrameThickness", "IfcPositiveLengthMeasure"},
    // clang-format on
};

static_assert(std::is_sorted(std::begin(attributes), std::end(attributes), [](const auto& a, const auto& b) {
    return a.className != b.className ? a.className < b.className : a.place < b.place;
}));

} // namespace

std::span<const DirectAttribute> directAttributesOf(std::string_view className) {
    const auto* const first =
        std::lower_bound(std::begin(attributes), std::end(attributes), className,
                         [](const DirectAttribute& each, std::string_view name) { return each.className < name; });
    const auto* const end = std::find_if(first, std::end(attributes),
                                         [&](const DirectAttribute& each) { return each.className != className; });
    return {first, end};
}

} // namespace annotate
