#include "Annotate/Placements.h"

#include "Annotate/AsciiCase.h"
#include "Annotate/ModelFile.h"
#include "Annotate/ModelUnits.h"
#include "Annotate/StepParameters.h"
#include "Annotate/StepScanner.h"
#include "Annotate/StepValue.h"

#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace annotate {

namespace {

using Vector = std::array<double, 3>;

Vector operator*(double factor, const Vector& a) {
    return {factor * a[0], factor * a[1], factor * a[2]};
}

Vector operator+(const Vector& a, const Vector& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}

double dot(const Vector& a, const Vector& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Vector cross(const Vector& a, const Vector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

/// Of length 1; the other one if it has no direction.
Vector normalized(const Vector& a, const Vector& other) {
    const double length = std::sqrt(dot(a, a));
    return length > 0 && std::isfinite(length) ? 1 / length * a : other;
}

/// A system of coordinates within another.
struct Frame {
    Vector origin{0, 0, 0};
    Vector x{1, 0, 0};
    Vector y{0, 1, 0};
    Vector z{0, 0, 1};

    Vector turned(const Vector& a) const { return a[0] * x + a[1] * y + a[2] * z; }

    /// The frame that is within this one.
    Frame with(const Frame& inner) const {
        return {origin + turned(inner.origin), turned(inner.x), turned(inner.y), turned(inner.z)};
    }
};

/// The axis is that of z, the reference's part across it that of x.
Frame frameOf(const Vector& origin, const Vector& axis, const Vector& reference) {
    Frame frame;
    frame.origin = origin;
    frame.z = normalized(axis, frame.z);
    const Vector other = std::abs(frame.z[0]) < 0.5 ? Vector{1, 0, 0} : Vector{0, 1, 0};
    const auto across = [&frame](const Vector& a) { return a + -dot(a, frame.z) * frame.z; };
    frame.x = normalized(across(reference), normalized(across(other), other));
    frame.y = cross(frame.z, frame.x);
    return frame;
}

/// Takes the statements that are wanted, by their numbers, or by a class.
class StatementTexts : public InstanceReader {
public:
    explicit StatementTexts(std::set<std::uint64_t> wantedIds, std::string_view ofClass = {})
        : wanted(std::move(wantedIds)), wantedClass(ofClass) {}

    void take(StepScanner& scanner, const ModelInstance& instance) override {
        const std::uint64_t id = instanceNumber(scanner, instance);
        const std::uintmax_t start = scanner.position();
        scanner.skipStatement();
        if (wanted.contains(id) || (!wantedClass.empty() && equalsInAnyCase(instance.keyword, wantedClass))) {
            texts.insert_or_assign(id, std::string(scanner.textSince(start)));
        }
    }

    /// Nothing if there was none of that number.
    std::optional<StepParameters> find(std::uint64_t id) const {
        const auto found = texts.find(id);
        return found == texts.end() ? std::nullopt : std::optional(StepParameters(found->second));
    }

    template <typename Each>
    void forEach(const Each& each) const {
        for (const auto& [id, text] : texts) {
            each(id, StepParameters(text));
        }
    }

private:
    std::set<std::uint64_t> wanted;
    std::string_view wantedClass;
    std::unordered_map<std::uint64_t, std::string> texts;
};

/// The numbers of a point or a direction, of two or three of them.
std::optional<Vector> vectorIn(const std::optional<StepParameters>& parameters) {
    if (!parameters) {
        return std::nullopt;
    }
    Vector vector{0, 0, 0};
    std::size_t place = 0;
    for (const StepParameter each : (*parameters)[0]) {
        const std::optional<double> number = numberIn(each);
        if (!number || place == vector.size()) {
            return std::nullopt;
        }
        vector[place++] = *number;
    }
    return vector;
}

std::size_t countOf(const StepParameters& parameters) {
    std::size_t count = 0;
    for ([[maybe_unused]] const StepParameter each : parameters.all()) {
        ++count;
    }
    return count;
}

/// A local placement: within which one it is, and where.
struct Local {
    std::uint64_t within = 0; ///< 0 if in none.
    std::uint64_t axes = 0;
};

class PlacementReader {
public:
    PlacementReader(const std::filesystem::path& model, const std::set<std::uint64_t>& instances) {
        StatementTexts first(instances, "IFCLOCALPLACEMENT");
        readModelFile(model, first);
        std::set<std::uint64_t> axes;
        first.forEach([&](std::uint64_t id, const StepParameters& parameters) {
            if (instances.contains(id)) {
                constexpr std::size_t placeOfPlacement = 5; // in every IfcProduct
                placements.emplace(id, parameters[placeOfPlacement].reference());
            } else {
                const Local local{parameters[0].reference(), parameters[1].reference()};
                locals.emplace(id, local);
                axes.insert(local.axes);
            }
        });
        StatementTexts second(std::move(axes));
        readModelFile(model, second);
        std::set<std::uint64_t> vectors;
        second.forEach([&](std::uint64_t /*id*/, const StepParameters& parameters) {
            const std::vector<std::uint64_t> ids = parameters.all().references();
            vectors.insert(ids.begin(), ids.end());
        });
        StatementTexts third(std::move(vectors));
        readModelFile(model, third);
        second.forEach([&](std::uint64_t id, const StepParameters& parameters) {
            const auto vectorAt = [&](std::size_t place) {
                return vectorIn(third.find(parameters[place].reference()));
            };
            if (const std::optional<Vector> origin = vectorAt(0)) {
                const bool isFlat = countOf(parameters) == 2; // location and reference, without an axis
                const Vector axis = isFlat ? Vector{0, 0, 1} : vectorAt(1).value_or(Vector{0, 0, 1});
                frames.emplace(id, frameOf(*origin, axis, vectorAt(isFlat ? 1 : 2).value_or(Vector{1, 0, 0})));
            }
        });
    }

    /// In the model's own unit.
    std::optional<Vector> originOf(std::uint64_t instance) const {
        const auto found = placements.find(instance);
        if (found == placements.end()) {
            return std::nullopt;
        }
        Frame frame;
        std::size_t depth = 0;
        for (std::uint64_t next = found->second; next != 0; ++depth) {
            const auto local = locals.find(next);
            const auto inner = local == locals.end() ? frames.end() : frames.find(local->second.axes);
            if (inner == frames.end() || depth > locals.size()) { // there is none, or it is within itself
                return std::nullopt;
            }
            frame = inner->second.with(frame);
            next = local->second.within;
        }
        return depth == 0 ? std::nullopt : std::optional(frame.origin);
    }

private:
    std::unordered_map<std::uint64_t, std::uint64_t> placements; ///< Of the instances.
    std::unordered_map<std::uint64_t, Local> locals;
    std::unordered_map<std::uint64_t, Frame> frames;
};

} // namespace

std::map<std::uint64_t, Point> placesOf(const std::filesystem::path& model, const ModelUnits& units,
                                        const std::set<std::uint64_t>& instances) {
    const ModelUnit* const unit = units.ofType("IfcLengthMeasure");
    const double factor = unit != nullptr && unit->isConvertible ? unit->factor : 1;
    std::map<std::uint64_t, Point> places;
    try {
        const PlacementReader reader(model, instances);
        for (const std::uint64_t instance : instances) {
            if (const auto origin = reader.originOf(instance)) {
                places.emplace(instance, Point{factor * (*origin)[0], factor * (*origin)[1], factor * (*origin)[2]});
            }
        }
    } catch (const StepError& problem) {
        throw brokenModel(model, problem.what());
    }
    return places;
}

} // namespace annotate
