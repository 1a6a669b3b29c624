#pragma once

#include "Host/Record.h"

namespace orv::tests {

enum class Urgency { Low = -1, Normal = 5 };

constexpr auto namesOf(Urgency /*value*/) {
    return std::array{host::Name{Urgency::Low, "low"}, host::Name{Urgency::Normal, "as usual"}};
}

/// A record with a field of each type that there can be.
struct EveryField : host::Record<EveryField> {
    static constexpr auto entityName = "Every";

    bool truth = false;
    int number = 7;
    std::uint32_t count = 0;
    std::int64_t total = 0;
    double real = 0;
    std::string text = "none";
    Guid id;
    Urgency urgency = Urgency::Normal;
    std::chrono::year_month_day date{};
    std::chrono::sys_seconds second;
    std::chrono::sys_time<std::chrono::milliseconds> millisecond;
    std::chrono::system_clock::time_point nanosecond;
    std::optional<double> perhaps;
    std::optional<std::string> perhapsText = "default";
    std::vector<std::string> texts;
    std::vector<bool> truths;
    std::vector<Urgency> urgencies;

    static constexpr auto fields =
        std::tuple(host::field("Truth", &EveryField::truth), host::field("Number", &EveryField::number),
                   host::field("Count", &EveryField::count), host::field("Total", &EveryField::total),
                   host::field("Real", &EveryField::real), host::field("Text", &EveryField::text),
                   host::field("Id", &EveryField::id), host::field("Urgency", &EveryField::urgency),
                   host::field("Date", &EveryField::date), host::field("Second", &EveryField::second),
                   host::field("Millisecond", &EveryField::millisecond),
                   host::field("Nanosecond", &EveryField::nanosecond), host::field("Perhaps", &EveryField::perhaps),
                   host::field("PerhapsText", &EveryField::perhapsText), host::field("Texts", &EveryField::texts),
                   host::field("Truths", &EveryField::truths), host::field("Urgencies", &EveryField::urgencies));
};

/// The texts that the record would be written with: ">name=text" for each attribute, ">name" for one without.
inline std::string attributesOf(const domain::shared::enhancementsforreferencemodel::EnhancementBase& record) {
    std::string shown;
    for (const auto& [name, value] : record.getAttributes()) {
        shown += '>' + name;
        shown += value.isEmpty() ? "" : '=' + value.get<std::string>();
    }
    return shown;
}

} // namespace orv::tests
