#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace annotate {

class StepParameter;

/// The parameters of a statement of a STEP file, as a tree. The texts are parts of the statement, which outlives this.
class StepParameters {
public:
    enum class Kind : std::uint8_t {
        Missing,
        Derived,
        Integer,
        Real,
        String,
        Enumeration,
        Reference,
        Binary,
        List,
        Typed
    };

    /// Parses what is behind the '(' of a statement, up to the ')' that closes it; what follows isn't looked at. Throws
    /// StepError if that isn't a list of parameters.
    explicit StepParameters(std::string_view text);

    /// All of them, as a list.
    StepParameter all() const;

    /// The parameter at the place. One that the statement doesn't have is a missing one.
    StepParameter operator[](std::size_t place) const;

private:
    friend class StepParameter;

    struct Node {
        std::string_view text;
        std::uint32_t size = 1; ///< Of itself and all that is below it, which follows it.
        Kind kind = Kind::Missing;
    };

    std::vector<Node> nodes;
};

/// A parameter, or an element of one. It lives no longer than its StepParameters.
class StepParameter {
public:
    using Kind = StepParameters::Kind;

    class Iterator;

    Kind kind() const { return node->kind; }
    bool is(Kind wanted) const { return node->kind == wanted; }

    /// What the file has between the quotes or dots, behind the '#', or before the brackets of a typed value; the
    /// spelling of a number. Empty text for the others.
    std::string_view text() const { return node->text; }

    /// The number of the instance that a reference names; 0, which no instance has, if it is something else.
    std::uint64_t reference() const;

    /// All references in it and below it.
    std::vector<std::uint64_t> references() const;

    // The elements of a list, or the one value in a typed one.
    bool isEmpty() const { return node->size == 1; }
    Iterator begin() const;
    Iterator end() const;

private:
    friend class StepParameters;

    explicit StepParameter(const StepParameters::Node* parameter) : node(parameter) {}

    const StepParameters::Node* node;
};

class StepParameter::Iterator {
public:
    explicit Iterator(const StepParameters::Node* element) : node(element) {}
    StepParameter operator*() const { return StepParameter(node); }
    Iterator& operator++() {
        node += node->size;
        return *this;
    }
    bool operator==(const Iterator&) const = default;

private:
    const StepParameters::Node* node;
};

inline StepParameter::Iterator StepParameter::begin() const {
    return Iterator(node + 1);
}

inline StepParameter::Iterator StepParameter::end() const {
    return Iterator(node + node->size);
}

/// All instances that the text of a parameter refers to.
std::vector<std::uint64_t> referencesIn(const std::string& parameter);

} // namespace annotate
