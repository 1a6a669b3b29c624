#include "Annotate/ModelUnits.h"

#include "Annotate/ModelStatements.h"
#include "Annotate/StepParameters.h"
#include "Annotate/StepValue.h"
#include "Annotate/UnitSymbols.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <optional>

namespace annotate {

namespace {

using Kind = StatementKind;

bool isUnit(Kind kind) {
    constexpr Kind unitKinds[] = {Kind::SiUnit, Kind::ConversionUnit, Kind::DerivedUnit, Kind::MonetaryUnit,
                                  Kind::ContextUnit};
    return std::find(std::begin(unitKinds), std::end(unitKinds), kind) != std::end(unitKinds);
}

bool isComposed(std::string_view symbol) {
    return symbol.find("·") != std::string_view::npos || symbol.find('/') != std::string_view::npos;
}

/// Makes the symbol of a derived unit, as in kg/(K·s³).
class DerivedSymbol {
public:
    void add(std::string_view symbol, int power) {
        if (power != 0) {
            std::string& side = power > 0 ? above : below;
            const int size = std::abs(power);
            const bool isRaised = symbol.ends_with("²") || symbol.ends_with("³");
            const bool needsBrackets = isComposed(symbol) || (isRaised && size != 1);
            side.append(side.empty() ? "" : "·");
            side += raised(needsBrackets ? '(' + std::string(symbol) + ')' : std::string(symbol), size);
        }
    }

    std::string text() const {
        const std::string start = above.empty() ? "1" : above;
        if (below.empty()) {
            return above;
        }
        return start + '/' + (isComposed(below) ? '(' + below + ')' : below);
    }

private:
    std::string above;
    std::string below;
};

} // namespace

double converted(double number, const ModelUnit& from, const ModelUnit& to) {
    constexpr int digits = 15;
    std::array<char, 32> text{};
    double rounded = 0;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), (from.toSi(number) - to.offset) / to.factor,
                                   std::chars_format::general, digits);
    std::from_chars(text.data(), end.ptr, rounded);
    return rounded;
}

/// Reads the declared units, of which one may be made of others.
class ModelUnits::Reader {
public:
    Reader(const ModelStatements& from, std::map<std::uint64_t, Declared>& into) : statements(from), units(into) {}

    void readAll() {
        std::vector<std::uint64_t> pending;
        statements.forEach([&](std::uint64_t id, Kind kind) {
            if (isUnit(kind)) {
                pending.push_back(id);
            }
        });
        // A unit is read in the round after its parts. What takes more rounds is made of itself, or might as well be.
        constexpr int rounds = 16;
        for (int round = 0; round < rounds && !pending.empty(); ++round) {
            isLastRound = round + 1 == rounds;
            std::erase_if(pending, [this](std::uint64_t id) { return read(id); });
        }
    }

private:
    /// Returns false if that has to wait for its parts.
    bool read(std::uint64_t id) {
        const auto statement = statements.find(id);
        Declared declared;
        isWaiting = false;
        fill(declared, statement.statementClass->kind, StepParameters(statement.text));
        if (isWaiting && !isLastRound) {
            return false;
        }
        units.emplace(id, std::move(declared));
        return true;
    }

    const ModelUnit* part(std::uint64_t id) {
        const auto found = units.find(id);
        if (found == units.end()) {
            isWaiting = isWaiting || isUnit(statements.find(id).statementClass->kind);
            return nullptr;
        }
        return &found->second.unit;
    }

    void fill(Declared& declared, Kind kind, const StepParameters& parameters) {
        declared.kind = textIn(parameters[1]);
        switch (kind) {
        case Kind::SiUnit:
            fillSi(declared.unit, textIn(parameters[2]), textIn(parameters[3]));
            break;
        case Kind::ConversionUnit:
            declared.unit.symbol = symbolOfName(textIn(parameters[2]));
            fillConversion(declared.unit, parameters[3].reference(), numberIn(parameters[4]).value_or(0));
            break;
        case Kind::DerivedUnit:
            fillDerived(declared, parameters[0]);
            break;
        case Kind::MonetaryUnit:
            declared.kind = "MONETARYUNIT";
            declared.unit.symbol = textIn(parameters[0]);
            break;
        default:
            declared.unit.symbol = textIn(parameters[2]);
        }
    }

    static void fillSi(ModelUnit& unit, std::string_view prefixName, std::string_view name) {
        const SiUnitName* const siName = SiUnitName::find(name);
        const SiPrefix* const prefix = SiPrefix::find(prefixName);
        if (siName != nullptr && prefix != nullptr) {
            unit.symbol = raised(std::string(prefix->symbol).append(siName->symbol), siName->power);
            // A square millimetre is that of a millimetre, not a thousandth of a square metre.
            unit.factor = std::pow(prefix->factor, siName->power) * siName->factor;
            unit.offset = siName->offset;
            unit.isConvertible = true;
        }
    }

    void fillConversion(ModelUnit& unit, std::uint64_t measureId, double offset) {
        const auto measure = statements.find(measureId);
        if (measure.statementClass->kind != Kind::MeasureWithUnit) {
            return;
        }
        const StepParameters parameters(measure.text);
        const std::optional<double> number = numberIn(parameters[0]);
        const ModelUnit* const base = part(parameters[1].reference());
        if (number && base != nullptr && base->isConvertible) {
            // The offset is added to what the base makes in this unit: degrees Fahrenheit are kelvin * 9/5 - 459.67.
            unit.factor = *number * base->factor;
            unit.offset = base->offset - offset * unit.factor;
            unit.isConvertible = true;
        }
    }

    void fillDerived(Declared& declared, StepParameter elements) {
        DerivedSymbol symbol;
        bool isConvertible = true;
        double factor = 1;
        for (const std::uint64_t id : elements.references()) {
            const auto element = statements.find(id);
            if (element.statementClass->kind != Kind::DerivedUnitElement) {
                return;
            }
            const StepParameters parameters(element.text);
            const ModelUnit* const unit = part(parameters[0].reference());
            const double power = numberIn(parameters[1]).value_or(0);
            if (unit == nullptr || std::abs(power) > 100) {
                return;
            }
            symbol.add(unit->symbol, static_cast<int>(power));
            isConvertible = isConvertible && unit->isConvertible;
            factor *= std::pow(unit->factor, power);
        }
        const bool isCoherent = isConvertible && std::abs(factor - 1) < 1e-12;
        const std::string_view usual = isCoherent ? coherentSymbol(declared.kind) : std::string_view{};
        declared.unit = {usual.empty() ? symbol.text() : std::string(usual), isConvertible, factor, 0};
    }

    const ModelStatements& statements;
    std::map<std::uint64_t, Declared>& units;
    bool isWaiting = false;
    bool isLastRound = false;
};

ModelUnits::ModelUnits(const ModelStatements& statements, const std::vector<std::uint64_t>& assigned) {
    Reader(statements, units).readAll();
    for (const std::uint64_t id : assigned) {
        if (const auto found = units.find(id); found != units.end()) {
            unitsByKind.emplace(found->second.kind, &found->second.unit);
        }
    }
}

const ModelUnit* ModelUnits::ofType(std::string_view valueType) const {
    const auto found = unitsByKind.find(unitKind(valueType));
    return found == unitsByKind.end() ? nullptr : found->second;
}

const ModelUnit* ModelUnits::ofInstance(std::uint64_t id) const {
    const auto found = units.find(id);
    return found == units.end() ? nullptr : &found->second.unit;
}

} // namespace annotate
