#pragma once

#include "Stress/Worker.h"
#include "Xml/Element.h"
#include "Xml/File.h"

#include <algorithm>
#include <iostream>
#include <map>
#include <set>
#include <sstream>
#include <sys/wait.h>

namespace orv::stress {

/// Finds what was stored in a round and is lost. It is shown what others than the library do to the files.
class Judge {
public:
    void sawDestroyed(const std::string& content) { contents.push_back(content); }

    /// Takes what a file holds now: if that is no document of records, it has to be kept.
    void saw(const std::string& content) {
        if (!content.empty() && !recordsIn(content)) {
            foreign.insert(content);
        }
    }

    void check(bool holds, const std::string& message) {
        if (!holds) {
            ++violations;
            std::cerr << "violation: " << message << '\n';
        }
    }

    /// After the end of all other processes. Counts the journal's events and gives the number of violations.
    int judge(const Round& round, std::map<char, int>& events) {
        std::vector<fs::path> stores;
        std::set<std::string> copies;
        for (const auto& entry : fs::directory_iterator(round.stores)) {
            const fs::path& file = entry.path();
            if (file.native().find(".keeping-") != std::string::npos) {
                continue;
            }
            const std::string content = contents.emplace_back(contentOf(file));
            if (file.extension() == ".xml") {
                stores.push_back(file);
            } else {
                ++events['k'];
                check(copies.insert(file.stem().stem().native() + content).second, file.native() + " is kept again");
                check(isWhole(content), file.native() + " is torn");
            }
        }
        checkRecords(round, events);
        for (const std::string& old : foreign) {
            const auto isIt = [&](const std::string& content) { return content.starts_with(old); };
            check(std::any_of(contents.begin(), contents.end(), isIt), "no copy is kept of " + old.substr(0, 200));
        }
        for (const fs::path& store : stores) {
            check(isUsable(store), store.native() + " isn't usable");
        }
        return violations;
    }

private:
    /// The number of records in a document of records; nothing if the content is none.
    static std::optional<long> recordsIn(const std::string& content) {
        std::istringstream stream(content);
        xml::File file;
        const auto root = file.parse(stream, "", nullptr);
        if (!root || !root->boNodeNameIs("Enhancements")) {
            return std::nullopt;
        }
        long count = 0;
        for (auto node = root->FirstChildGet(); node; node = node->NextSiblingGet()) {
            count += std::count(std::begin(kinds), std::end(kinds), node->getNodeName());
        }
        return count;
    }

    /// Whether the content is no part of one: what a kill leaves of a write ends with a page.
    bool isWhole(const std::string& content) const {
        return recordsIn(content) || content.size() >= pageSize ||
               std::any_of(foreign.begin(), foreign.end(), [&](auto& known) { return content.starts_with(known); });
    }

    void checkRecords(const Round& round, std::map<char, int>& events) {
        std::set<std::string> there;
        for (const std::string& content : contents) {
            std::istringstream pieces(content);
            for (std::string piece; std::getline(pieces, piece, '<');) {
                there.insert(piece.substr(piece.find('>') + 1));
            }
        }
        std::set<std::string> stored;
        std::ifstream journal(round.journalPath);
        for (std::string line; std::getline(journal, line);) {
            ++events[line[0]];
            (line[0] == '+' ? stored : there).insert(line.substr(1));
        }
        for (const std::string& text : stored) {
            check(there.contains(text), "record " + text + " is lost");
        }
    }

    /// Whether a new process that knows all kinds loads the file, adds to it and keeps what it can't load.
    static bool isUsable(const fs::path& store) {
        const pid_t child = ::fork();
        if (child == 0) {
            for (const char* kind : kinds) {
                Factory::registerClass(std::make_unique<SampleRecord>(kind));
            }
            EnhancementsFile::setFilePath(store);
            const std::string content = contentOf(store);
            const auto count = recordsIn(content);
            const auto loaded = std::ssize(Enhancements::getOrCreateEnhancementsDb()->getRecords());
            const bool isRight =
                loaded == count.value_or(0) && add(kinds[0], "judge") && recordsIn(contentOf(store)) == loaded + 1 &&
                (count || content.empty() || isKept(store, [&](const auto& copy) { return copy == content; }));
            setContent(store, "judge");
            const bool isKeeping =
                add(kinds[0], "judge") && isKept(store, [](const auto& copy) { return copy == "judge"; });
            ::_exit(isRight && isKeeping ? 0 : 1);
        }
        int status = -1;
        ::waitpid(child, &status, 0);
        return status == 0;
    }

    std::vector<std::string> contents;
    std::set<std::string> foreign;
    int violations = 0;
};

} // namespace orv::stress
