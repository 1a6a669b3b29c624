#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace annotate {

class ModelStatements;

/// The unit of a number.
struct ModelUnit {
    std::string symbol;         ///< As in "mm" or "W/(m²·K)"; that of money is its currency.
    bool isConvertible = false; ///< Whether the other two are known.
    double factor = 1;
    double offset = 0;

    /// The number in the coherent unit of the SI.
    double toSi(double number) const { return number * factor + offset; }
};

/// The number of the one unit in the other, with 15 digits, so that 3 ft are 0.9144 m. Both are convertible.
double converted(double number, const ModelUnit& from, const ModelUnit& to);

/// The units that a model declares.
class ModelUnits {
public:
    /// Reads all of them; assigned are those of the project, of which the first of a kind counts. What
    /// refers to what isn't there isn't convertible. Throws StepError if one is malformed.
    ModelUnits(const ModelStatements& statements, const std::vector<std::uint64_t>& assigned);
    ModelUnits(ModelUnits&&) = default; // a copy would lead to units of the original

    /// The unit that the project assigns to the values of a type like IfcLengthMeasure; null if it assigns none.
    const ModelUnit* ofType(std::string_view valueType) const;

    /// The unit that the instance is; null if it is none.
    const ModelUnit* ofInstance(std::uint64_t id) const;

private:
    class Reader;

    struct Declared {
        ModelUnit unit;
        std::string kind; ///< As the file spells it, as in LENGTHUNIT.
    };

    std::map<std::uint64_t, Declared> units;
    std::map<std::string, const ModelUnit*, std::less<>> unitsByKind;
};

} // namespace annotate
