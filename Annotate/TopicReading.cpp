#include "Annotate/TopicReading.h"

#include "Annotate/Arguments.h"
#include "Annotate/AsciiCase.h"
#include "Annotate/DerivedId.h"
#include "Annotate/TopicEscapes.h"
#include "Annotate/TopicText.h"
#include "Annotate/XmlTree.h"
#include "Annotate/ZipArchive.h"
#include "Host/FieldText.h"
#include "Host/TimeText.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace annotate {

namespace {

/// Parts of a time are milliseconds here. One without a time zone is taken as UTC.
std::optional<Time> momentIn(const std::string& text) {
    std::string_view rest = orv::host::trimmed(text);
    std::string time(rest.substr(0, rest.find('.')));
    rest.remove_prefix(time.size());
    const std::size_t zone = std::min(rest.find_first_not_of(".0123456789"), rest.size());
    constexpr std::size_t milliseconds = 4; // with the point
    time.append(rest.substr(0, std::min(zone, milliseconds))).append(rest.substr(zone));
    const bool hasZone = time.find_first_of("Z+", 0) != std::string::npos || time.rfind('-') > time.find('T');
    Time taken;
    return orv::host::take(hasZone ? time : time + 'Z', taken) ? std::optional(taken) : std::nullopt;
}

bool isClosed(std::string_view status) {
    constexpr std::string_view closed[] = {"closed", "resolved", "done", "fixed", "completed"};
    return std::any_of(std::begin(closed), std::end(closed),
                       [status](std::string_view each) { return equalsInAnyCase(each, status); });
}

std::string textIn(const XmlElement& element, std::string_view name) {
    return withoutEscapes(element.textOf(name));
}

using GlobalIds = std::vector<std::string>;

struct Viewpoint {
    std::string id;
    GlobalIds selected; ///< Its objects.
};

/// Reads the topics one after the other.
class TopicReader {
public:
    explicit TopicReader(const std::filesystem::path& archivePath) : path(archivePath), archive(archivePath) {
        const std::vector<std::string>& names = archive.getNames();
        for (std::size_t place = 0; place < names.size(); ++place) {
            places.emplace(names[place], place);
        }
    }

    TopicsRead readAll() {
        requireVersion();
        for (const std::string& name : archive.getNames()) {
            const std::filesystem::path entry(name);
            if (equalsInAnyCase(entry.filename().string(), "markup.bcf")) {
                readTopic(name, entry.parent_path().generic_string());
            }
        }
        if (read.topics.empty() && read.leftOut.empty()) {
            throw RequestError(path.string() + " is a zip archive without a topic of BCF in it (markup.bcf).");
        }
        return std::move(read);
    }

private:
    XmlElement document(const std::string& name) {
        try {
            return readXml(archive.contentOf(places.at(name)));
        } catch (const XmlError& error) {
            throw RequestError(name + " in " + path.string() + ' ' + error.what() + '.');
        }
    }

    void requireVersion() {
        for (const std::string& name : archive.getNames()) {
            if (equalsInAnyCase(std::filesystem::path(name).filename().string(), "bcf.version")) {
                const std::string version = document(name).attribute("VersionId");
                if (!version.empty() && !version.starts_with("2.") && !version.starts_with("3.")) {
                    throw RequestError(path.string() + " is of the version " + version +
                                       " of BCF. Versions 2.0, 2.1 and 3.0 are read.");
                }
            }
        }
    }

    void readTopic(const std::string& name, const std::string& folder) {
        const XmlElement markup = document(name);
        const XmlElement* const element = markup.child("Topic");
        if (element == nullptr) {
            throw RequestError(name + " in " + path.string() + " has no Topic, as each has to have.");
        }
        const std::vector<Viewpoint> viewpoints = readViewpoints(markup, *element, folder);
        const bool selects = std::any_of(viewpoints.begin(), viewpoints.end(),
                                         [](const Viewpoint& each) { return !each.selected.empty(); });
        Topic topic = topicIn(*element, folder, selects);
        std::unordered_set<std::string> selected(topic.globalIds.begin(), topic.globalIds.end());
        for (const Viewpoint& each : viewpoints) {
            std::copy_if(each.selected.begin(), each.selected.end(), std::back_inserter(topic.globalIds),
                         [&selected](const std::string& id) { return selected.insert(id).second; });
        }
        countLeftOut(*element);
        const Note note = topic.note;
        const GlobalIds globalIds = topic.globalIds;
        add(std::move(topic));
        const XmlElement* const group = element->child("Comments"); // of version 3.0
        for (const XmlElement& each : group == nullptr ? markup.children : group->children) {
            if (each.name == "Comment") {
                readComment(each, note, globalIds, viewpoints);
            }
        }
    }

    /// The description names an object only where no viewpoint selects one.
    Topic topicIn(const XmlElement& element, const std::string& folder, bool selects) {
        Topic topic;
        std::string description = textIn(element, "Description");
        if (const std::string globalId = selects ? "" : takeObjectLine(description); !globalId.empty()) {
            topic.globalIds.push_back(globalId);
        }
        Note& note = topic.note;
        note.text = textOf({textIn(element, "Title"), description});
        note.id = idIn(element.attribute("Guid"), folder);
        note.resolved = isClosed(element.attribute("TopicStatus"));
        if (const std::string priority = element.textOf("Priority");
            !priority.empty() && !orv::host::take(priority, note.priority)) {
            ++read.leftOut["priorities that aren't whole numbers"];
        }
        note.author = textIn(element, "CreationAuthor");
        note.made = takeMoment(element.textOf("CreationDate"));
        takeChange(element, note);
        return topic;
    }

    void readComment(const XmlElement& element, const Note& about, const GlobalIds& globalIds,
                     const std::vector<Viewpoint>& viewpoints) {
        Topic comment;
        Note& note = comment.note;
        note.text = textIn(element, "Comment");
        note.author = textIn(element, "Author");
        note.made = takeMoment(element.textOf("Date"));
        note.id = idIn(element.attribute("Guid"), note.author + element.textOf("Date") + note.text);
        note.resolved = about.resolved;
        takeChange(element, note);
        const XmlElement* const viewpoint = element.child("Viewpoint");
        const auto own = std::find_if(viewpoints.begin(), viewpoints.end(), [viewpoint](const Viewpoint& each) {
            return viewpoint != nullptr && each.id == viewpoint->attribute("Guid") && !each.selected.empty();
        });
        comment.globalIds = own == viewpoints.end() ? globalIds : own->selected;
        add(std::move(comment));
    }

    std::optional<Time> takeMoment(const std::string& text) {
        const std::optional<Time> moment = momentIn(text);
        if (!moment && !orv::host::trimmed(text).empty()) {
            ++read.leftOut["times that aren't understood"];
        }
        return moment;
    }

    void takeChange(const XmlElement& element, Note& note) {
        note.changed = takeMoment(element.textOf("ModifiedDate"));
        note.changedBy = note.changed ? textIn(element, "ModifiedAuthor") : "";
    }

    static orv::Guid idIn(const std::string& text, const std::string& otherwise) {
        orv::Guid id;
        return id.boSet(orv::host::trimmed(text)) ? id : derivedId(otherwise);
    }

    void add(Topic topic) {
        if (topic.note.text.empty()) {
            ++read.leftOut["topics and comments without a text"];
        } else if (known.insert(*topic.note.id).second) {
            read.topics.push_back(std::move(topic));
        } else {
            ++read.leftOut["topics and comments that come twice"];
        }
    }

    /// What each of the topic's viewpoints selects.
    std::vector<Viewpoint> readViewpoints(const XmlElement& markup, const XmlElement& topic,
                                          const std::string& folder) {
        std::vector<Viewpoint> viewpoints;
        const XmlElement* const group = topic.child("Viewpoints"); // of version 3.0
        for (const XmlElement& each : group == nullptr ? markup.children : group->children) {
            if (!equalsInAnyCase(each.name, group == nullptr ? "Viewpoints" : "ViewPoint")) {
                continue;
            }
            if (!each.textOf("Snapshot").empty()) {
                ++read.leftOut["snapshots"];
            }
            const std::string name =
                (std::filesystem::path(folder) / orv::host::trimmed(each.textOf("Viewpoint"))).generic_string();
            if (places.contains(name)) {
                viewpoints.push_back({each.attribute("Guid"), readSelection(document(name))});
            }
        }
        return viewpoints;
    }

    GlobalIds readSelection(const XmlElement& viewpoint) {
        for (const char* const part : {"Lines", "ClippingPlanes", "Bitmaps", "Bitmap"}) {
            if (const XmlElement* const found = viewpoint.child(part); found != nullptr && !found->children.empty()) {
                ++read.leftOut["lines, planes and pictures in viewpoints"];
            }
        }
        GlobalIds selected;
        const XmlElement* const components = viewpoint.child("Components");
        if (components == nullptr) {
            return selected;
        }
        const XmlElement* const visibility = components->child("Visibility");
        if (components->child("Coloring") != nullptr ||
            (visibility != nullptr && visibility->child("Exceptions") != nullptr)) {
            ++read.leftOut["colours and hidden objects of viewpoints"];
        }
        const XmlElement* const selection = components->child("Selection"); // which version 2.0 doesn't have
        for (const XmlElement& each : (selection == nullptr ? components : selection)->children) {
            const std::string globalId(orv::host::trimmed(each.attribute("IfcGuid")));
            if (each.name == "Component" && !globalId.empty() && each.attribute("Selected") != "false") {
                selected.push_back(globalId);
            }
        }
        return selected;
    }

    void countLeftOut(const XmlElement& topic) {
        constexpr std::pair<const char*, const char*> parts[] = {
            {"AssignedTo", "people that topics are assigned to"},
            {"BimSnippet", "snippets"},
            {"DocumentReference", "documents"},
            {"DueDate", "due dates"},
            {"Label", "labels"},
            {"Labels", "labels"},
            {"ReferenceLink", "links"},
            {"RelatedTopic", "relations between topics"},
            {"Stage", "stages"},
        };
        const auto count = [&](const XmlElement& each) {
            const auto* const part = std::find_if(std::begin(parts), std::end(parts),
                                                  [&each](const auto& kind) { return each.name == kind.first; });
            const bool isFilled =
                !each.attributes.empty() || !each.children.empty() || !orv::host::trimmed(each.text).empty();
            if (part != std::end(parts) && isFilled && each.child("Label") == nullptr) {
                ++read.leftOut[part->second];
            }
        };
        for (const XmlElement& each : topic.children) {
            count(each);
            if (each.name != "Comments" && each.name != "Viewpoints") {
                std::for_each(each.children.begin(), each.children.end(), count); // in groups, from version 3.0 on
            }
        }
    }

    std::filesystem::path path;
    ZipArchive archive;
    std::map<std::string, std::size_t> places; ///< Of the entries, by their names.
    std::unordered_set<orv::Guid> known;
    TopicsRead read;
};

} // namespace

TopicsRead readTopics(const std::filesystem::path& path) {
    return TopicReader(path).readAll();
}

} // namespace annotate
