#pragma once

#include "Stress/Worker.h"

#include <iostream>
#include <map>
#include <set>
#include <sstream>
#include <sys/wait.h>

namespace orv::stress {

/// Finds what was stored in a round and is lost.
class Judge {
public:
    /// Takes what others than the library destroy of a file.
    void sawDestroyed(const std::string& content) { contents.push_back(content); }

    void check(bool holds, const std::string& message) {
        if (!holds) {
            ++violations;
            std::cerr << "violation: " << message << '\n';
        }
    }

    /// After the end of all other processes. Counts the journal's events and gives the number of violations.
    int judge(const Round& round, std::map<char, int>& events) {
        for (const auto& entry : fs::directory_iterator(round.stores)) {
            if (entry.path().extension() == ".xml") {
                checkIsUsable(entry.path(), round);
            }
        }
        std::set<std::string> copies;
        for (const auto& entry : fs::directory_iterator(round.stores)) {
            const fs::path& file = entry.path();
            if (file.native().find(".keeping-") != std::string::npos) {
                continue;
            }
            contents.push_back(contentOf(file));
            if (file.extension() != ".xml") {
                ++events['k'];
                const std::string store = file.stem().stem();
                check(copies.insert(store + contents.back()).second, file.native() + " is kept again");
            }
        }
        checkRecords(round, events);
        return violations;
    }

private:
    /// A new process that knows all kinds has to add to the file, and to lose nothing of what it can't load.
    void checkIsUsable(const fs::path& store, const Round& round) {
        const pid_t child = ::fork();
        if (child == 0) {
            for (const char* kind : kinds) {
                Factory::registerClass(std::make_unique<SampleRecord>(kind));
            }
            EnhancementsFile::setFilePath(store);
            const bool isAccepted = add(kinds[0], store);
            round.note('=', store);
            ::_exit(isAccepted ? 0 : 1);
        }
        int status = -1;
        ::waitpid(child, &status, 0);
        check(status == 0, store.native() + " isn't usable");
    }

    void checkRecords(const Round& round, std::map<char, int>& events) {
        std::set<std::string> there;
        for (const std::string& content : contents) {
            std::istringstream pieces(content);
            for (std::string piece; std::getline(pieces, piece, '<');) {
                there.insert(piece.substr(piece.find('>') + 1));
            }
        }
        std::ifstream journal(round.journalPath);
        for (std::string line; std::getline(journal, line);) {
            ++events[line[0]];
            const bool isStored = line[0] == '+' || line[0] == '=';
            check(!isStored || there.contains(line.substr(1)), line.substr(1) + " is lost");
        }
    }

    std::vector<std::string> contents;
    int violations = 0;
};

} // namespace orv::stress
