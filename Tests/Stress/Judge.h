#pragma once

#include "Stress/Worker.h"
#include "Utilities/DocumentReading.h"
#include "Xml/Outline.h"

#include <iostream>
#include <map>
#include <set>
#include <sstream>
#include <sys/wait.h>

namespace orv::stress {

/// Finds what was stored in a round and is lost.
class Judge {
public:
    /// Takes what others than the library destroy of a file, and of a save that was interrupted.
    void sawDestroyed(const fs::path& store) {
        contents.push_back(contentOf(store));
        std::error_code ignored;
        if (const auto reading = utilities::readDocument(store, ignored)) {
            contents.push_back(reading->content);
        }
    }

    /// Reads a file that only the library writes.
    void read(const fs::path& store) {
        std::error_code error;
        const auto reading = utilities::readDocument(store, error);
        check(reading ? reading->content.empty() || xml::Outline::parse(reading->content).has_value()
                      : error == std::errc::no_such_file_or_directory,
              store.native() + " is read torn");
    }

    void check(bool holds, const std::string& message) {
        if (!holds) {
            ++violations;
            std::cerr << "violation: " << message << '\n';
        }
    }

    /// After the end of all other processes. Counts the journal's events and returns the number of violations.
    int judge(const Round& round, std::map<char, int>& events) {
        for (const auto& entry : fs::directory_iterator(round.stores)) {
            if (entry.path().extension() == ".xml") {
                checkIsUsable(entry.path(), round);
            }
        }
        if (round.isShared) {
            contents = {contentOf(round.stores / "store0.xml")};
            checkRecords(round, events);
            return violations;
        }
        std::set<std::string> copies;
        for (const auto& entry : fs::directory_iterator(round.stores)) {
            const fs::path& file = entry.path();
            if (file.native().find(".keeping-") != std::string::npos) {
                continue;
            }
            contents.push_back(contentOf(file));
            if (file.native().find(".kept-") != std::string::npos) {
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
        check(status == 0 && !fs::exists(store.native() + ".saving"), store.native() + " isn't usable");
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
            if (line[0] == '+' || line[0] == '=') {
                stored.insert(line.substr(1));
            } else if (line[0] == '-') {
                there.insert(line.substr(1)); // or the taker could be quicker than the one that notes the addition
            }
        }
        for (const std::string& text : stored) {
            check(there.contains(text), text + " is lost");
        }
    }

    std::vector<std::string> contents;
    int violations = 0;
};

} // namespace orv::stress
