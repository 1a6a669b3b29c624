#pragma once

#include "Id/Guid.h"

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

namespace orv::domain::shared::enhancementsforreferencemodel {

struct PlainValue : std::variant<double, std::string, std::vector<PlainValue>> {
    using variant::variant;
};

struct PlainProperty {
    std::string name;
    PlainValue value;
};

struct PlainSet {
    std::string name;
    std::vector<PlainProperty> properties;
};

using PlainObject = std::vector<PlainSet>;

/// The floor: the least that holds the same data and finds it in the same way, by a hash of the Guid and by comparing
/// the names of the sets and the properties one after the other.
class PlainOverlay {
public:
    /// Null if there is none.
    PlainSet* findSet(const Guid& guid, const std::string& set) {
        const auto object = objects.find(guid);
        return object == objects.end() ? nullptr : findByName(object->second, set);
    }

    /// Null if there is none.
    PlainProperty* findProperty(const Guid& guid, const std::string& set, const std::string& property) {
        PlainSet* const found = findSet(guid, set);
        return found == nullptr ? nullptr : findByName(found->properties, property);
    }

    /// A copy of the value; nothing if there is none of that type.
    template <typename T>
    std::optional<T> get(const Guid& guid, const std::string& set, const std::string& property) {
        const PlainProperty* const found = findProperty(guid, set, property);
        const T* const value = found == nullptr ? nullptr : std::get_if<T>(&found->value);
        return value == nullptr ? std::nullopt : std::optional<T>(*value);
    }

    /// Sets the value of a property that is there, or appends one to a set that is there.
    template <typename T>
    void set(const Guid& guid, const std::string& setName, const std::string& property, const T& value) {
        PlainSet* const set = findSet(guid, setName);
        if (set == nullptr) {
            return;
        }
        if (PlainProperty* const present = findByName(set->properties, property)) {
            present->value = value;
        } else {
            set->properties.push_back({property, value});
        }
    }

    std::unordered_map<Guid, PlainObject> objects;

private:
    template <typename Named>
    static Named* findByName(std::vector<Named>& all, const std::string& name) {
        const auto found =
            std::find_if(all.begin(), all.end(), [&name](const Named& candidate) { return candidate.name == name; });
        return found == all.end() ? nullptr : &*found;
    }
};

} // namespace orv::domain::shared::enhancementsforreferencemodel
