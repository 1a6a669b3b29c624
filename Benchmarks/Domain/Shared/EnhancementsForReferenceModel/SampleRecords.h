// The records that ours, the floor and the peers store, and what their benchmarks share.

#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementBase.h"
#include "Object/PropertyValue.h"

#include <benchmark/benchmark.h>

#include <charconv>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orv::domain::shared::enhancementsforreferencemodel {

using Records = std::vector<std::unique_ptr<EnhancementBase>>;
using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

class Mark : public EnhancementBase {
public:
    std::string getEntityName() const override { return "Mark"; }
    std::vector<std::pair<std::string, object::PropertyValue>> getAttributes() const override {
        std::vector<std::pair<std::string, object::PropertyValue>> attributes;
        attributes.reserve(4);
        attributes.emplace_back("Number", number);
        attributes.emplace_back("Visible", visible);
        attributes.emplace_back("Label", label);
        attributes.emplace_back("Remark", remark);
        return attributes;
    }
    void setAttributes(const std::vector<std::pair<std::string, std::string>>& attributes) override {
        EnhancementBase::setAttributes(attributes);
        for (const auto& [name, text] : attributes) {
            if (name == "Number") {
                std::from_chars(text.data(), text.data() + text.size(), number);
            } else if (name == "Visible") {
                visible = text == "true";
            } else if (name == "Label") {
                label = text;
            } else if (name == "Remark") {
                remark = text;
            }
        }
    }
    std::unique_ptr<EnhancementBase> createInstance() const override { return std::make_unique<Mark>(); }

    int number = 0;
    bool visible = true;
    std::string label = "Door 12a";
    std::string remark = "Width < 80 cm & height > 2 m: \"check\" before ordering";
};

inline std::unique_ptr<EnhancementBase> makeMark(int number) {
    auto mark = std::make_unique<Mark>();
    mark->ownerId.data1 = static_cast<std::uint32_t>(number) * 2654435761U;
    mark->number = number;
    return mark;
}

inline Records makeMarks(std::int64_t count) {
    Records marks;
    while (static_cast<std::int64_t>(marks.size()) < count) {
        marks.push_back(makeMark(static_cast<int>(marks.size())));
    }
    return marks;
}

/// The text of an attribute.
inline std::string textOf(const object::PropertyValue& value) {
    switch (value.getIndex()) {
    case 1:
        return std::to_string(value.get<int>());
    case 3:
        return value.get<bool>() ? "true" : "false";
    default:
        return value.get<std::string>();
    }
}

/// The numbers of records that one is added to.
inline void eachSize(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(10)->Range(10, 10000)->UseManualTime();
}

} // namespace orv::domain::shared::enhancementsforreferencemodel
