#include "Annotate/ModelMaterials.h"

#include "Annotate/ModelStatements.h"
#include "Annotate/StepParameters.h"
#include "Annotate/StepValue.h"

#include <algorithm>
#include <unordered_set>

namespace annotate {

using Kind = StatementKind;

namespace {

/// The first text of a material, a layer and the like is its name; those without one are named by their class.
std::string nameOf(const ModelStatements::Statement& statement, const StepParameters& parameters) {
    for (const StepParameter parameter : parameters.all()) {
        if (parameter.is(StepParameter::Kind::String)) {
            return textIn(parameter);
        }
    }
    return std::string(statement.statementClass->name);
}

} // namespace

ModelMaterials::ModelMaterials(const ModelStatements& statements) {
    statements.forEach([&](std::uint64_t id, Kind kind) {
        if (kind == Kind::MaterialProperties) {
            properties.emplace_back(StepParameters(statements.find(id).text)[3].reference(), id);
        } else if (kind == Kind::ExtendedMaterialProperties || kind == Kind::MaterialAttributes) {
            properties.emplace_back(StepParameters(statements.find(id).text)[0].reference(), id);
        }
    });
    std::sort(properties.begin(), properties.end());
}

std::vector<ModelMaterials::Properties> ModelMaterials::propertiesOf(const ModelStatements& statements,
                                                                     std::uint64_t material) const {
    std::vector<Properties> found;
    std::vector<std::uint64_t> pending = {material};
    std::unordered_set<std::uint64_t> visited; // layers share materials
    while (!properties.empty() && !pending.empty()) {
        const std::uint64_t id = pending.back();
        pending.pop_back();
        const auto statement = statements.find(id);
        if (statement.statementClass->kind != Kind::Referenced || !visited.insert(id).second) {
            continue;
        }
        const StepParameters parameters(statement.text);
        auto each = std::lower_bound(properties.begin(), properties.end(), std::pair(id, std::uint64_t()));
        for (; each != properties.end() && each->first == id; ++each) {
            found.push_back({nameOf(statement, parameters), each->second});
        }
        const std::vector<std::uint64_t> parts = parameters.all().references();
        pending.insert(pending.end(), parts.rbegin(), parts.rend());
    }
    return found;
}

} // namespace annotate
