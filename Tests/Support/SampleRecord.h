#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementBase.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orv::tests {

using domain::shared::enhancementsforreferencemodel::EnhancementBase;
using TypedAttributes = std::vector<std::pair<std::string, object::PropertyValue>>;
using StringAttributes = std::vector<std::pair<std::string, std::string>>;

/// A record of any kind with any attributes.
class SampleRecord : public EnhancementBase {
public:
    explicit SampleRecord(std::string kindName, TypedAttributes typedAttributes = {})
        : kind(std::move(kindName)), attributes(std::move(typedAttributes)) {}
    ~SampleRecord() override { ++destroyed; }
    SampleRecord(const SampleRecord&) = delete;
    SampleRecord& operator=(const SampleRecord&) = delete;

    std::string getEntityName() const override { return kind; }
    TypedAttributes getAttributes() const override {
        ++written;
        return attributes;
    }
    void setAttributes(const StringAttributes& list) override {
        EnhancementBase::setAttributes(list);
        received = list;
        for (const auto& [name, text] : list) {
            if (name != "OwnerId") {
                attributes.emplace_back(name, text);
            }
        }
    }
    std::unique_ptr<EnhancementBase> createInstance() const override { return std::make_unique<SampleRecord>(kind); }

    std::string kind;
    TypedAttributes attributes;
    StringAttributes received;

    static inline int written = 0;
    static inline int destroyed = 0;
};

/// A kind that can't be made by name.
class SealedRecord : public EnhancementBase {
public:
    std::string getEntityName() const override { return "Sealed"; }
    TypedAttributes getAttributes() const override { return {}; }
};

} // namespace orv::tests
