#include "IfcVersionMapping/OwnDefinitions.h"

#include "Assert/UntilUnload.h"

#include <algorithm>
#include <deque>
#include <set>
#include <unordered_map>

namespace orv::ifc {

using def::xml::Def;

bool hasOwnDefinitions = false;

namespace {

class Kept {
public:
    /// A copy of the text that stays where it is.
    const char* keep(const std::string& text) { return texts.insert(text).first->c_str(); }

    std::deque<Def> definitions;
    std::unordered_map<std::string_view, std::unordered_map<std::string_view, const Def*>> bySet;
    std::unordered_map<std::string_view, std::vector<std::string_view>> classesOfSet;

private:
    std::set<std::string> texts;
};

/// Null at the end of the process.
Kept* kept() {
    return UntilUnload<Kept>::get();
}

bool isSame(const Def& known, const DefinitionsFile::Property& property) {
    return known.kind == property.kind && known.valueType == property.valueType &&
           known.definedValueType == property.definedValueType && known.enumerationValues == property.enumerationValues;
}

} // namespace

std::optional<DefinitionsRefusal> keepDefinitions(const DefinitionsFile& file, const std::string& source) {
    for (const auto& property : file.properties) {
        const Def* const known = findOwnDefinition(property.set, property.name);
        if (known != nullptr && !isSame(*known, property)) {
            return DefinitionsRefusal{property.line, property.set + '.' + property.name + " is another in " +
                                                         std::string(std::string_view(known->source))};
        }
    }
    Kept* const all = kept();
    if (all == nullptr) {
        return std::nullopt;
    }
    hasOwnDefinitions = true;
    for (const auto& property : file.properties) {
        const char* const set = all->keep(property.set);
        const char* const name = all->keep(property.name);
        const Def*& known = all->bySet[set][name];
        if (known == nullptr) {
            known = &all->definitions.emplace_back(Def{set, name, property.kind, all->keep(property.valueType),
                                                       all->keep(property.definedValueType),
                                                       all->keep(property.enumerationValues), all->keep(source)});
        }
    }
    for (const auto& set : file.sets) {
        auto& classes = all->classesOfSet[all->keep(set.name)];
        for (const std::string& name : set.classes) {
            if (std::find(classes.begin(), classes.end(), name) == classes.end()) {
                classes.emplace_back(all->keep(name));
            }
        }
    }
    return std::nullopt;
}

const Def* findOwnDefinition(std::string_view pset, std::string_view property) {
    const Kept* const all = kept();
    if (all == nullptr) {
        return nullptr;
    }
    const auto set = all->bySet.find(pset);
    if (set == all->bySet.end()) {
        return nullptr;
    }
    const auto found = set->second.find(property);
    return found == set->second.end() ? nullptr : found->second;
}

std::vector<const Def*> ownDefinitions() {
    std::vector<const Def*> all;
    if (const Kept* const present = kept()) {
        for (const Def& definition : present->definitions) {
            all.push_back(&definition);
        }
    }
    return all;
}

std::vector<std::string_view> ownClasses(std::string_view pset) {
    const Kept* const all = kept();
    if (all == nullptr) {
        return {};
    }
    const auto found = all->classesOfSet.find(pset);
    return found == all->classesOfSet.end() ? std::vector<std::string_view>() : found->second;
}

} // namespace orv::ifc
