#pragma once

#include "FoundationClasses/FcBase.h"
#include "FoundationClasses/FcPropertySetDefinition.h"
#include "FoundationClasses/NameIndex.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace orv::fc {

class Data;

namespace core::kernel {

/// An object of a model: an instance of IfcObjectDefinition or of a class below it. All these classes are told apart by
/// their rows of the class table alone. Data makes instances of the other classes below IfcRoot in this form as well.
class ORV_FOUNDATION_CLASSES_EXPORT FcObjectDefinition : public FcBase {
public:
    /// The class must be a row of the table.
    explicit FcObjectDefinition(const IfcClass& rowOfTable) : ifcClass(&rowOfTable) {}

    const char* className() const override { return ifcClass->name.data(); }
    std::uint32_t kindNumber() const override { return ifcClass->kindNumber; }

    /// Of "GlobalId", returns the id in 22 characters.
    std::optional<std::string> getAttributeAsString(const std::string& attribute) const override;

    /// The object's first set of that name and class, null if there is none.
    template <typename Set>
    std::shared_ptr<Set> getPropertySetDefinitionNonConst(const std::string& setName) const {
        return std::static_pointer_cast<Set>(setIndex.find(propertySetDefinitions, setName, [](const auto& definition) {
            return definition.kindNumber() == Set::classNumber;
        }));
    }

    /// The same, made and appended if there is none. owner isn't used: sets aren't entities of a
    /// Data here.
    template <typename Set>
    std::shared_ptr<Set> getOrCreatePropertySetDefinition([[maybe_unused]] Data& owner, const std::string& setName) {
        auto definition = getPropertySetDefinitionNonConst<Set>(setName);
        if (!definition) {
            definition = std::make_shared<Set>();
            definition->name = setName;
            propertySetDefinitions.push_back(definition);
        }
        return definition;
    }

    std::weak_ptr<Data> data; ///< That which made the object.

    /// For hosts to change as well; one that renames a set there puts it in anew (see NameTable).
    std::vector<std::shared_ptr<FcPropertySetDefinition>> propertySetDefinitions;

private:
    const IfcClass* ifcClass;
    mutable NameIndex<FcPropertySetDefinition> setIndex;
};

} // namespace core::kernel

} // namespace orv::fc
