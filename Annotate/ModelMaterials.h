#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace annotate {

class ModelStatements;

/// The properties of a model's materials.
class ModelMaterials {
public:
    /// The name of a material, or of a layer and the like, and the instance that holds properties of it.
    struct Properties {
        std::string material;
        std::uint64_t id;
    };

    /// Throws StepError if a statement of properties is malformed.
    explicit ModelMaterials(const ModelStatements& statements);

    /// Those of the material of that number and of all that it is made of: layers, constituents, profiles. None for 0.
    std::vector<Properties> propertiesOf(const ModelStatements& statements, std::uint64_t material) const;

private:
    std::vector<std::pair<std::uint64_t, std::uint64_t>> properties; ///< Materials with what holds properties, sorted.
};

} // namespace annotate
