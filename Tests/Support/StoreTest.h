#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "Support/AnotherProcess.h"
#include "Support/ReportTest.h"
#include "Support/SampleRecord.h"
#include "Support/TemporaryDirectory.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace orv::tests {

using domain::shared::enhancementsforreferencemodel::Enhancements;
using domain::shared::enhancementsforreferencemodel::EnhancementsFile;
using domain::shared::enhancementsforreferencemodel::Factory;

/// Tests of the database and its file, with one registered kind, Sample.
class StoreTest : public ReportTest {
protected:
    StoreTest() {
        share(directory);
        Factory::registerClass(std::make_unique<SampleRecord>("Sample"));
        EnhancementsFile::setFilePath(path);
    }

    static bool add(const std::string& text) {
        if (isOnTheWay()) {
            return true;
        }
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
        if (isOnTheWay()) {
            return texts;
        }
        for (const auto& record : Enhancements::getOrCreateEnhancementsDb()->getRecords()) {
            const auto& attributes = dynamic_cast<const SampleRecord&>(*record).attributes;
            texts += attributes.front().second.get<std::string>() + ' ';
        }
        return texts;
    }

    /// Whether there is a failure that isn't one of what is only repeated.
    static bool hasFailed() { return HasFailure() && !isOnTheWay(); }

    static void setContent(const std::filesystem::path& file, const std::string& content) {
        if (!isOnTheWay()) {
            tests::setContent(file, content);
        }
    }

    static std::string contentOf(const std::filesystem::path& file) {
        return isOnTheWay() ? std::string() : tests::contentOf(file);
    }

    /// The contents of the kept copies, by name and so by time.
    std::vector<std::string> keptCopies() const {
        std::vector<std::string> contents;
        if (isOnTheWay()) {
            return contents;
        }
        for (const auto& file : std::set<std::filesystem::path>(begin(files()), end(files()))) {
            if (file.filename().string().starts_with("store.xml.kept-")) {
                contents.push_back(contentOf(file));
            }
        }
        return contents;
    }

    std::filesystem::directory_iterator files() const {
        return std::filesystem::directory_iterator(path.parent_path());
    }
    std::ptrdiff_t fileCount() const { return isOnTheWay() ? 0 : std::distance(begin(files()), end(files())); }

    TemporaryDirectory directory = directoryOfTest();
    std::filesystem::path path = directory / "store.xml";
};

} // namespace orv::tests
