#include "Annotate/TopicWriting.h"

#include "Annotate/DerivedId.h"
#include "Annotate/TopicEscapes.h"
#include "Annotate/TopicText.h"
#include "Annotate/ValueText.h"
#include "Host/TimeText.h"

#include <cmath>
#include <set>

namespace annotate {

namespace {

constexpr std::string_view declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
constexpr std::string_view topicType = "Remark";
constexpr std::string_view openStatus = "Open";
constexpr std::string_view closedStatus = "Closed";

/// An element with a text, on a line of its own; nothing for the empty text.
std::string element(std::string_view name, std::string_view text) {
    return text.empty() ? std::string() : escapedElement(name, text) + '\n';
}

/// The same with elements in it, also if there are none.
std::string group(std::string_view name, std::string_view elements) {
    std::string lines;
    return lines.append("<").append(name).append(">\n").append(elements).append("</").append(name).append(">\n");
}

/// As the schemas want it: 36 characters, of which the letters are small.
std::string uuidOf(const orv::Guid& id) {
    return id.toString(true);
}

orv::Guid viewpointIdOf(const Topic& topic) {
    return derivedId("viewpoint of " + topic.note.id.value_or(orv::Guid()).toString(false));
}

/// Neither may be missing.
std::string personOf(const std::string& author) {
    return author.empty() ? "unknown" : author;
}
std::string timeOf(const std::optional<Time>& time) {
    return orv::host::textOf(time.value_or(Time()));
}

std::string headerMarkup(const TopicsHead& head) {
    const bool isNew = head.version == BcfVersion::Bcf30;
    std::string file = "<File";
    file += head.projectId.empty() ? "" : " IfcProject=\"" + head.projectId + '"';
    file.append(isNew ? " IsExternal" : " isExternal").append("=\"true\">\n");
    file.append(element("Filename", head.modelName)).append("</File>\n");
    return group("Header", isNew ? group("Files", file) : file);
}

std::string vectorMarkup(std::string_view name, double x, double y, double z) {
    return group(name, element("X", valueText(x)) + element("Y", valueText(y)) + element("Z", valueText(z)));
}

/// Looks down at the place from the south-east, some steps away.
std::string cameraMarkup(BcfVersion version, const Point& place) {
    constexpr double step = 4;
    constexpr double third = 1 / 3.0;
    // The direction (-2, 2, -1) / 3, and the part of the vertical that is across it, (-2, 2, 8) / sqrt(72).
    constexpr double up = 0.2357022603955158;
    const auto rounded = [](double metres) { return std::round(metres * 1e6) / 1e6; };
    return group("PerspectiveCamera", vectorMarkup("CameraViewPoint", rounded(place.x + 2 * step),
                                                   rounded(place.y - 2 * step), rounded(place.z + step)) +
                                          vectorMarkup("CameraDirection", -2 * third, 2 * third, -third) +
                                          vectorMarkup("CameraUpVector", -up, up, 4 * up) +
                                          element("FieldOfView", "60") +
                                          (version == BcfVersion::Bcf30 ? element("AspectRatio", "1.5") : ""));
}

} // namespace

std::string topicMarkup(const TopicsHead& head, const Topic& topic, bool hasViewpoint, const std::string& ending) {
    const Note& note = topic.note;
    const bool isNew = head.version == BcfVersion::Bcf30;
    const TitledText text = titledText(note.text);
    std::string content = element("Title", text.title);
    content += note.priority == 0 ? "" : element("Priority", std::to_string(note.priority));
    content += element("CreationDate", timeOf(note.made)) + element("CreationAuthor", personOf(note.author));
    if (note.changed) {
        content += element("ModifiedDate", timeOf(note.changed)) + element("ModifiedAuthor", personOf(note.changedBy));
    }
    const std::string& description = text.description.empty() && !ending.empty() ? text.title : text.description;
    content += element("Description", description + ending);
    std::string viewpoint;
    if (hasViewpoint) {
        viewpoint.append(isNew ? "<ViewPoint" : "<Viewpoints").append(" Guid=\"").append(uuidOf(viewpointIdOf(topic)));
        viewpoint.append("\">\n").append(element("Viewpoint", "viewpoint.bcfv"));
        viewpoint += isNew ? "</ViewPoint>\n" : "</Viewpoints>\n";
        content += isNew ? group("Viewpoints", viewpoint) : "";
    }
    std::string markup = headerMarkup(head) + "<Topic Guid=\"" + uuidOf(note.id.value_or(orv::Guid()));
    markup.append("\" TopicType=\"").append(topicType).append("\" TopicStatus=\"");
    markup.append(note.resolved ? closedStatus : openStatus).append("\">\n").append(content).append("</Topic>\n");
    return std::string(declaration) + group("Markup", markup + (isNew ? "" : viewpoint));
}

std::string topicViewpoint(BcfVersion version, const Topic& topic, const std::optional<Point>& place) {
    std::string components;
    for (const std::string& globalId : topic.globalIds) {
        components.append("<Component IfcGuid=\"").append(globalId).append("\"/>\n");
    }
    std::string viewpoint(declaration);
    viewpoint.append("<VisualizationInfo Guid=\"").append(uuidOf(viewpointIdOf(topic))).append("\">\n");
    viewpoint += group("Components", group("Selection", components) + "<Visibility DefaultVisibility=\"true\"/>\n");
    return viewpoint + (place ? cameraMarkup(version, *place) : "") + "</VisualizationInfo>\n";
}

std::string versionMarkup(BcfVersion version) {
    std::string markup(declaration);
    if (version == BcfVersion::Bcf30) {
        return markup + "<Version VersionId=\"3.0\"/>\n";
    }
    return markup + "<Version VersionId=\"2.1\">\n<DetailedVersion>2.1</DetailedVersion>\n</Version>\n";
}

std::string extensionsMarkup(const std::vector<Topic>& topics) {
    std::set<int> priorities;
    std::set<std::string> people;
    for (const Topic& topic : topics) {
        priorities.insert(topic.note.priority);
        people.insert(personOf(topic.note.author));
        people.insert(topic.note.changed ? personOf(topic.note.changedBy) : personOf(topic.note.author));
    }
    priorities.erase(0);
    std::string priorityElements;
    for (const int priority : priorities) {
        priorityElements += element("Priority", std::to_string(priority));
    }
    std::string userElements;
    for (const std::string& person : people) {
        userElements += element("User", person);
    }
    return std::string(declaration) +
           group("Extensions",
                 group("TopicTypes", element("TopicType", topicType)) +
                     group("TopicStatuses", element("TopicStatus", openStatus) + element("TopicStatus", closedStatus)) +
                     group("Priorities", priorityElements) + group("Users", userElements));
}

} // namespace annotate
