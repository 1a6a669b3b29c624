#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "Support/ReportTest.h"
#include "Support/SampleRecord.h"
#include "Support/TemporaryDirectory.h"

#include <algorithm>
#include <functional>
#include <set>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace orv::tests {

using domain::shared::enhancementsforreferencemodel::Enhancements;
using domain::shared::enhancementsforreferencemodel::EnhancementsFile;
using domain::shared::enhancementsforreferencemodel::Factory;

/// Tests of the database and its file, with one registered kind, Sample.
class StoreTest : public ReportTest {
protected:
    StoreTest() {
        Factory::registerClass(std::make_unique<SampleRecord>("Sample"));
        EnhancementsFile::setFilePath(path);
    }

    static bool add(const std::string& text) {
        std::unique_ptr<EnhancementBase> record =
            std::make_unique<SampleRecord>("Sample", TypedAttributes{{"Text", text}});
        Enhancements::addEnhancement(std::move(record));
        return record == nullptr;
    }

    /// The record of that number in the database, from 0 on.
    static SampleRecord& record(std::size_t number) {
        return dynamic_cast<SampleRecord&>(*Enhancements::getOrCreateEnhancementsDb()->getRecords().at(number));
    }

    /// The element that a record with that text is stored as.
    static std::string element(const std::string& text) {
        return "  <Sample>\n    <OwnerId>0000000000000000000000</OwnerId>\n    <Text>" + text +
               "</Text>\n  </Sample>\n";
    }

    static std::string documentOf(const std::string& elements) {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Enhancements>\n" + elements + "</Enhancements>\n";
    }

    /// The file that records with those texts are stored in.
    static std::string document(const std::vector<std::string>& texts) {
        std::string elements;
        for (const std::string& text : texts) {
            elements += element(text);
        }
        return documentOf(elements);
    }

    /// The texts of the records in the database, in order, a blank behind each.
    static std::string loadedTexts() {
        std::string texts;
        for (const auto& record : Enhancements::getOrCreateEnhancementsDb()->getRecords()) {
            const auto& attributes = dynamic_cast<const SampleRecord&>(*record).attributes;
            texts += attributes.front().second.get<std::string>() + ' ';
        }
        return texts;
    }

    /// Runs the action in a process of its own, which is another one for the file and loads it anew, and returns the
    /// text that the action returned.
    static std::string inAnotherProcess(const std::function<std::string()>& action) {
        int ends[2];
        EXPECT_EQ(::pipe(ends), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            const std::string text = action();
            const bool isTold = ::write(ends[1], text.data(), text.size()) == std::ssize(text);
            ::_exit(isTold && !HasFailure() ? 0 : 1);
        }
        ::close(ends[1]);
        std::string text(1000, '\0');
        text.resize(static_cast<std::size_t>(std::max<ssize_t>(0, ::read(ends[0], text.data(), text.size()))));
        ::close(ends[0]);
        int status = -1;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
        return text;
    }

    /// The contents of the kept copies, by name and so by time.
    std::vector<std::string> keptCopies() const {
        std::vector<std::string> contents;
        for (const auto& file : std::set<std::filesystem::path>(begin(files()), end(files()))) {
            if (file.filename().native().starts_with("store.xml.kept-")) {
                contents.push_back(contentOf(file));
            }
        }
        return contents;
    }

    std::filesystem::directory_iterator files() const {
        return std::filesystem::directory_iterator(path.parent_path());
    }
    std::ptrdiff_t fileCount() const { return std::distance(begin(files()), end(files())); }

    TemporaryDirectory directory;
    std::filesystem::path path = directory / "store.xml";
};

} // namespace orv::tests
