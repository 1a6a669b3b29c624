#include "Annotate/Additions.h"
#include "Annotate/Exports.h"
#include "Annotate/NamedObject.h"
#include "Annotate/Placements.h"
#include "Annotate/Terminal.h"
#include "Annotate/TopicText.h"
#include "Annotate/TopicWriting.h"
#include "Annotate/ZipArchive.h"
#include "FoundationClasses/IfcClass.h"

#include <algorithm>
#include <map>
#include <set>

namespace annotate {

namespace {

BcfVersion versionOf(const Arguments& arguments) {
    return arguments.bcfVersion == "2.1" ? BcfVersion::Bcf21 : BcfVersion::Bcf30;
}

std::string projectIdOf(const Model& model) {
    const auto& objects = model.getObjects();
    const auto project = std::find_if(objects.begin(), objects.end(),
                                      [](const ModelObject& each) { return each.ifcClass->name == "IfcProject"; });
    const auto id = project == objects.end() ? std::nullopt : idOf(model, *project);
    return id ? id->toString(false) : "";
}

/// The places of the objects that have notes, for the cameras.
std::map<std::uint64_t, Point> placesFor(const Additions& additions) {
    std::set<std::uint64_t> instances;
    for (const AddedNote& added : additions.getNotes()) {
        if (added.object != nullptr) {
            instances.insert(added.object->id);
        }
    }
    const ModelDetails& details = additions.getDetails();
    return instances.empty() ? std::map<std::uint64_t, Point>()
                             : placesOf(details.getPath(), details.getUnits(), instances);
}

/// As in "IfcWall North wall".
std::string nameOf(const ModelObject* object) {
    return object == nullptr ? "one that the model no longer has"
                             : std::string(object->ifcClass->name) + (object->name.empty() ? "" : ' ' + object->name);
}

} // namespace

ExportOutcome exportTopics(const Arguments& arguments, NewFile& file) {
    const Additions additions(arguments);
    const Model& model = additions.getDetails().getModel();
    const TopicsHead head{versionOf(arguments), model.getObjects().empty() ? "" : arguments.model.filename().string(),
                          projectIdOf(model)};
    const std::map<std::uint64_t, Point> places = placesFor(additions);
    std::vector<Topic> topics;
    NewZipArchive archive;
    archive.add("bcf.version", versionMarkup(head.version));
    std::size_t withoutViewpoint = 0;
    for (const AddedNote& added : additions.getNotes()) {
        Topic& topic = topics.emplace_back(Topic{*added.note, {added.note->ownerId.toString(false)}});
        topic.note.id = idOf(added.number, *added.note);
        const auto found = added.object == nullptr ? places.end() : places.find(added.object->id);
        const auto place = found == places.end() ? std::nullopt : std::optional(found->second);
        const bool hasViewpoint = place || head.version == BcfVersion::Bcf21;
        const std::string folder = topic.note.id->toString(true) + '/';
        std::string line;
        if (!hasViewpoint) {
            ++withoutViewpoint;
            line = objectLine(nameOf(added.object), topic.globalIds.front());
        }
        archive.add(folder + "markup.bcf", topicMarkup(head, topic, hasViewpoint, line));
        if (hasViewpoint) {
            archive.add(folder + "viewpoint.bcfv", topicViewpoint(head.version, topic, place));
        }
    }
    if (head.version == BcfVersion::Bcf30) {
        archive.add("extensions.xml", extensionsMarkup(topics));
    }
    file.write(archive.finish());
    ExportOutcome outcome{arguments.file.string() + " holds " + countOf(topics.size(), "topic") + '.', {}};
    if (withoutViewpoint > 0) {
        outcome.remarks.push_back("The objects of " + countOf(withoutViewpoint, "topic") +
                                  " have no place to look at, and are named in the description.");
    }
    return outcome;
}

} // namespace annotate
