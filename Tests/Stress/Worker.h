#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "Support/SampleRecord.h"
#include "Support/TemporaryDirectory.h"
#include "Utilities/ScopeGuard.h"

#include <algorithm>
#include <fcntl.h>
#include <random>
#include <sys/file.h>
#include <sys/resource.h>
#include <unistd.h>

namespace orv::stress {

namespace fs = std::filesystem;
using namespace domain::shared::enhancementsforreferencemodel;
using tests::contentOf;
using tests::SampleRecord;
using tests::setContent;

inline constexpr const char* kinds[] = {"Note", "Mark", "Plan"};
inline constexpr unsigned pageSize = 4096;

struct Dice : std::mt19937_64 {
    using std::mt19937_64::mt19937_64;
    unsigned below(std::size_t bound) { return static_cast<unsigned>((*this)() % bound); }
};

/// The files that processes share for a while, and the journal of what happened, a letter and a text a line: + stored,
/// = put there by others, - taken out, ~ accepted but not seen, ! refused, * record changed, > path changed. The main
/// program counts d kills, e ends, c corruptions, k copies, r readings and R rounds beside them.
struct Round {
    enum class Space { Ample, Limited, Small };

    fs::path anyStore(Dice& dice) const {
        return stores / ("store" + std::to_string(isShared ? 0 : dice.below(3)) + ".xml");
    }

    void note(char event, const std::string& text) const {
        std::ofstream(journalPath, std::ios_base::app) << event + text + '\n' << std::flush;
    }

    fs::path stores; // a directory
    fs::path journalPath;
    Space space;
    bool isShared; // all have one file open, which nobody else changes, and take nothing out
};

/// Waits for the lock of an existing file, and has it until the guard's end.
inline ScopeGuard hold(const fs::path& path, int operation) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    ::flock(descriptor, operation);
    return ScopeGuard([descriptor] { ::close(descriptor); });
}

/// Returns whether the record was accepted.
inline bool add(const std::string& kind, const std::string& text, std::size_t size = 0) {
    const std::string content(size, '.');
    std::unique_ptr<EnhancementBase> record =
        std::make_unique<SampleRecord>(kind, tests::TypedAttributes{{"Text", text}, {"Content", content}});
    Enhancements::addEnhancement(std::move(record));
    return record == nullptr;
}

/// A process that adds records, from its first load to its end, and notes which were accepted and stored.
class Worker {
public:
    Worker(const Round& shared, int number, Dice::result_type seed)
        : round(shared), name(std::to_string(number)), dice(seed), path(round.anyStore(dice)) {}

    void live() {
        for (const char* kind : kinds) {
            if (dice.below(4) > 0) {
                Factory::registerClass(std::make_unique<SampleRecord>(kind));
            }
        }
        EnhancementsFile::setFilePath(path);
        for (unsigned step = dice.below(60); step > 0; --step) {
            const unsigned action = dice.below(40);
            if (action < 2) {
                EnhancementsFile::setFilePath(path = round.anyStore(dice));
                round.note('>', path);
            } else if (action < 4) {
                changeRecord(action == 2 && !round.isShared);
            } else if (action < 14) {
                ::usleep(dice.below(5000));
            } else {
                addRecord(name + '.' + std::to_string(step));
            }
        }
    }

private:
    void addRecord(const std::string& text) {
        std::error_code missing;
        const auto size = fs::file_size(path, missing);
        if (round.space == Round::Space::Limited) {
            // No less than the file has: what is written over takes no space elsewhere either.
            setLimit(((missing ? 0 : size) + pageSize - 1) / pageSize * pageSize + (dice.below(2) == 0 ? 0 : pageSize));
        }
        const bool isAccepted = add(kinds[dice.below(3)], text, dice.below(dice.below(20) == 0 ? 6000 : 200));
        setLimit(RLIM_INFINITY);
        const char accepted = round.space == Round::Space::Ample || isStored('>' + text + '<') ? '+' : '~';
        round.note(isAccepted ? accepted : '!', text);
    }

    /// Takes one out, or changes it, which moves all that is behind it in the file.
    void changeRecord(bool isToGo) {
        const auto db = Enhancements::getOrCreateEnhancementsDb();
        if (db->getRecords().empty()) {
            return;
        }
        auto& record = dynamic_cast<SampleRecord&>(*db->getRecords()[dice.below(db->getRecords().size())]);
        if (isToGo) {
            round.note('-', record.attributes.front().second.get<std::string>());
            Enhancements::takeRecord(record);
        } else {
            record.attributes.back().second = std::string(dice.below(300), '+');
            Enhancements::saveChanges();
            round.note('*', record.attributes.front().second.get<std::string>());
        }
    }

    static void setLimit(rlim_t bytes) {
        const rlimit limit{bytes, RLIM_INFINITY};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }

    /// Whether the file or a kept copy of it has the element.
    bool isStored(const std::string& element) const {
        const ScopeGuard held = hold(path, LOCK_SH);
        return std::any_of(fs::directory_iterator(round.stores), {}, [&](const fs::path& file) {
            return (file == path || file.native().starts_with(path.native() + ".kept-")) &&
                   contentOf(file).find(element) != std::string::npos;
        });
    }

    const Round& round;
    std::string name;
    Dice dice;
    fs::path path;
};

} // namespace orv::stress
