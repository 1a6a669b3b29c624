#pragma once

#include "FoundationClasses/NameTable.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace orv::fc {

/// Finds the elements of a public vector by their names: a few by looking at each, more by a table that is made then.
/// A copy starts without one.
template <typename Named>
class NameIndex {
public:
    /// Up to so many elements are looked at one by one.
    static constexpr std::size_t fewElements = 32;

    NameIndex() = default;
    NameIndex(const NameIndex& /*other*/) {}
    NameIndex& operator=(const NameIndex& /*other*/) { return *this; }
    ~NameIndex() = default;

    /// The first element of exactly that name that isSought accepts, null if there is none.
    template <typename IsSought>
    std::shared_ptr<Named> find(const std::vector<std::shared_ptr<Named>>& elements, const std::string& name,
                                const IsSought& isSought) {
        if (elements.size() > fewElements) {
            if (!table) {
                table = std::make_unique<NameTable<Named>>();
            }
            return table->find(elements, name, isSought);
        }
        for (const auto& element : elements) {
            if (element->name == name && isSought(*element)) {
                return element;
            }
        }
        return nullptr;
    }

private:
    std::unique_ptr<NameTable<Named>> table;
};

} // namespace orv::fc
