#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "Support/ReportTest.h"
#include "Support/SampleRecord.h"
#include "Support/TemporaryDirectory.h"

#include <functional>
#include <map>
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

    /// The texts of the records in the database, in order.
    static std::vector<std::string> loadedTexts() {
        std::vector<std::string> texts;
        for (const auto& record : Enhancements::getOrCreateEnhancementsDb()->getRecords()) {
            texts.push_back(dynamic_cast<const SampleRecord&>(*record).attributes.front().second.get<std::string>());
        }
        return texts;
    }

    /// Runs the action in a process of its own, which is another one for the file and loads it anew, and gives whether
    /// the action gave true.
    static bool inAnotherProcess(const std::function<bool()>& action) {
        const pid_t child = ::fork();
        if (child == 0) {
            ::_exit(action() ? 0 : 1);
        }
        int status = -1;
        ::waitpid(child, &status, 0);
        return status == 0;
    }

    /// The contents of the kept copies, by name and so by time.
    std::vector<std::string> keptCopies() const {
        std::map<std::string, std::string> copies;
        for (const auto& entry : std::filesystem::directory_iterator(path.parent_path())) {
            if (entry.path().filename().native().starts_with("store.xml.kept-")) {
                copies[entry.path()] = contentOf(entry.path());
            }
        }
        std::vector<std::string> contents;
        for (const auto& [name, content] : copies) {
            contents.push_back(content);
        }
        return contents;
    }

    std::size_t fileCount() const {
        const auto entries = std::filesystem::directory_iterator(path.parent_path());
        return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
    }

    TemporaryDirectory directory;
    std::filesystem::path path = directory / "store.xml";
};

} // namespace orv::tests
