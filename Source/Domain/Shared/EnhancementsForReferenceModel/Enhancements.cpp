#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"

#include "Assert/UntilUnload.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsState.h"
#include "Utilities/ScopeGuard.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace orv::domain::shared::enhancementsforreferencemodel {

namespace {

/// A record's destructor may call the library when that is unloaded.
using Singleton = UntilUnload<std::shared_ptr<Enhancements>>;

} // namespace

Enhancements::Enhancements() : state(std::make_unique<State>()) {}

Enhancements::~Enhancements() = default;
Enhancements::Enhancements(Enhancements&&) noexcept = default;
Enhancements& Enhancements::operator=(Enhancements&&) noexcept = default;

std::shared_ptr<Enhancements> Enhancements::getOrCreateEnhancementsDb() {
    std::shared_ptr<Enhancements>* const singleton = Singleton::get();
    if (singleton == nullptr) {
        return std::make_shared<Enhancements>();
    }
    if (!*singleton) {
        // Stored before the file is read: each record read comes back here through addEnhancement.
        *singleton = std::make_shared<Enhancements>();
        EnhancementsFile::readFile();
    }
    return *singleton;
}

bool Enhancements::loadAtOnce() {
    std::shared_ptr<Enhancements>* const singleton = Singleton::get();
    if (singleton == nullptr || *singleton) {
        return false;
    }
    *singleton = std::make_shared<Enhancements>();
    return EnhancementsFile::readFileAtOnce();
}

void Enhancements::addEnhancement(std::unique_ptr<EnhancementBase>&& record) {
    if (Singleton::get() == nullptr) {
        return;
    }
    const std::shared_ptr<Enhancements> enhancementsDb = getOrCreateEnhancementsDb();
    EnhancementsFile file(*enhancementsDb);
    if (file.lockFile()) {
        enhancementsDb->records.reserve(enhancementsDb->records.size() + 1);
        enhancementsDb->state->document.add(*record);
        enhancementsDb->records.push_back(std::move(record));
    }
    // The guard's end writes the file, with the new record.
}

bool Enhancements::addEnhancements(std::vector<std::unique_ptr<EnhancementBase>>& added) {
    if (Singleton::get() == nullptr || added.empty()) {
        return added.empty();
    }
    const std::shared_ptr<Enhancements> enhancementsDb = getOrCreateEnhancementsDb();
    auto& records = enhancementsDb->records;
    RecordDocument& document = enhancementsDb->state->document;
    EnhancementsFile file(*enhancementsDb);
    if (!file.lockFile()) {
        return false;
    }
    const std::size_t count = records.size();
    bool isStored = false;
    const ScopeGuard giveBack([&] {
        if (!isStored) {
            std::move(records.begin() + static_cast<std::ptrdiff_t>(count), records.end(), added.begin());
            records.resize(count);
            for (const auto& record : added) {
                document.remove(std::array<const EnhancementBase*, 1>{record.get()});
            }
        }
    });
    records.reserve(count + added.size());
    for (auto& record : added) {
        document.add(*record);
        records.push_back(std::move(record));
    }
    isStored = file.save();
    if (isStored) {
        added.clear();
    }
    return isStored;
}

bool Enhancements::saveChanges() {
    if (Singleton::get() == nullptr) {
        return false;
    }
    const std::shared_ptr<Enhancements> enhancementsDb = getOrCreateEnhancementsDb();
    EnhancementsFile file(*enhancementsDb);
    return file.lockFile() && file.save();
}

std::unique_ptr<EnhancementBase> Enhancements::takeRecord(const EnhancementBase& record) {
    auto taken = takeRecords({&record});
    return taken.empty() ? nullptr : std::move(taken.front());
}

std::vector<std::unique_ptr<EnhancementBase>> Enhancements::takeRecords(std::vector<const EnhancementBase*> wanted) {
    if (Singleton::get() == nullptr || wanted.empty()) {
        return {};
    }
    const std::shared_ptr<Enhancements> enhancementsDb = getOrCreateEnhancementsDb();
    auto& records = enhancementsDb->records;
    std::sort(wanted.begin(), wanted.end());
    wanted.erase(std::unique(wanted.begin(), wanted.end()), wanted.end());
    const auto stays = [&wanted](const auto& record) {
        return !std::binary_search(wanted.begin(), wanted.end(), record.get());
    };
    const auto staying = std::count_if(records.begin(), records.end(), stays);
    std::vector<std::unique_ptr<EnhancementBase>> taken;
    taken.reserve(wanted.size());
    EnhancementsFile file(*enhancementsDb);
    if (records.size() - static_cast<std::size_t>(staying) != wanted.size() || !file.lockFile()) {
        return {};
    }
    RecordDocument& document = enhancementsDb->state->document;
    bool isStored = false;
    const ScopeGuard putBack([&] {
        if (!isStored) {
            document.putBack();
        }
    });
    document.remove(wanted);
    isStored = file.save();
    if (isStored) {
        auto place = records.begin();
        for (auto& record : records) {
            if (stays(record)) {
                std::swap(*place++, record);
            } else {
                taken.push_back(std::move(record));
            }
        }
        records.erase(place, records.end());
    }
    return taken;
}

void Enhancements::resetDb() {
    // Taken out first, since a destructor may add a record.
    auto destroyed = std::exchange(records, {});
    state->document.clear();
    for (auto& record : destroyed) {
        record.reset();
    }
}

} // namespace orv::domain::shared::enhancementsforreferencemodel
