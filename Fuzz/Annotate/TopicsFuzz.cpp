// Any bytes are an archive of topics, or the markup of a topic in one, or throw a RequestError; the text of a topic
// that was read is read again from what is written of it.

#include "Annotate/Arguments.h"
#include "Annotate/TopicReading.h"
#include "Annotate/TopicText.h"
#include "Annotate/TopicWriting.h"
#include "Annotate/ZipArchive.h"
#include "Require.h"
#include "Support/TemporaryDirectory.h"

#include <string>
#include <utility>
#include <vector>

using namespace orv;

namespace {

annotate::TopicsRead readArchive(const std::string& bytes) {
    static const tests::TemporaryDirectory directory;
    static const auto path = directory / "topics.bcf";
    tests::setContent(path, bytes);
    try {
        return annotate::readTopics(path);
    } catch (const annotate::RequestError& error) {
        fuzz::require(std::string_view(error.what()).ends_with('.'), "a refusal is in sentences");
        return {};
    }
}

std::string packed(const std::vector<std::pair<std::string, std::string>>& files) {
    annotate::NewZipArchive archive;
    for (const auto& [name, content] : files) {
        archive.add(name, content);
    }
    return archive.finish();
}

void requireReadAgain(annotate::Topic topic) {
    topic.globalIds = {"1jXyBr6EAquR0PHYXIrQ4_"};
    for (const auto version : {annotate::BcfVersion::Bcf21, annotate::BcfVersion::Bcf30}) {
        const annotate::TopicsHead head{version, "", ""};
        const auto again =
            readArchive(packed({{"markup.bcf", annotate::topicMarkup(head, topic, true, "")},
                                {"viewpoint.bcfv", annotate::topicViewpoint(version, topic, std::nullopt)}}));
        fuzz::require(again.topics.size() == 1, "what is written is an archive");
        const annotate::Note& note = again.topics.front().note;
        fuzz::require(note.text == annotate::textOf(annotate::titledText(topic.note.text)), "a text is read again");
        fuzz::require(note.id == topic.note.id && note.priority == topic.note.priority &&
                          note.resolved == topic.note.resolved && note.changed == topic.note.changed,
                      "all else is read again");
    }
}

void requireTopics(const annotate::TopicsRead& read) {
    for (const annotate::Topic& topic : read.topics) {
        if (!topic.note.text.empty()) {
            requireReadAgain(topic);
        }
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const fuzz::Byte* data, std::size_t size) {
    const std::string bytes(data, data + size);
    requireTopics(readArchive(bytes));
    requireTopics(readArchive(packed({{"a/markup.bcf", bytes}, {"a/viewpoint.bcfv", bytes}})));
    return 0;
}
