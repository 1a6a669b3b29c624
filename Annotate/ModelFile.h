#pragma once

#include "Annotate/Model.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string_view>

namespace annotate {

class StepScanner;

/// An instance in the data of a model's file.
struct ModelInstance {
    std::string_view digits;     ///< Of its number.
    std::string_view keyword;    ///< Its class in the letter case of the file; empty if it is of many at once.
    bool isReferring = false;    ///< Its first parameter is a reference or a list, as with most of the geometry.
    std::uintmax_t position = 0; ///< Of its statement in the file.
};

/// What takes the instances of a model's file.
class InstanceReader {
public:
    InstanceReader() = default;
    InstanceReader(const InstanceReader&) = delete;
    InstanceReader& operator=(const InstanceReader&) = delete;
    virtual ~InstanceReader() = default;

    /// Takes the statement of the instance from behind the '(' of its parameters to its end. Is called again for the
    /// same instance where a block of the file ends, so it has no effects before it has taken all.
    virtual void take(StepScanner& scanner, const ModelInstance& instance) = 0;

    /// Is told the first schema that the header names, as in IFC4X3_ADD2, and where each section of data ends.
    virtual void takeSchema(std::string_view /*schema*/) {}
    virtual void takeDataEnd(std::uintmax_t /*position*/) {}
};

/// Lets the reader take each instance of the file, which may be packed alone in a zip archive. Throws ModelError if it
/// can't be read; what the reader has taken then is of no use.
void readModelFile(const std::filesystem::path& path, InstanceReader& reader);

/// Gives take the content of the file, unpacked if it is packed, block by block. Throws ModelError if it can't be read.
void copyModelFile(const std::filesystem::path& path, const std::function<void(std::string_view)>& take);

/// The number of the instance.
std::uint64_t instanceNumber(const StepScanner& scanner, const ModelInstance& instance);

/// That the model isn't read: problem ends the first sentence, and remedy is the second.
ModelError refusedModel(const std::filesystem::path& path, std::string_view problem, std::string_view remedy);

/// That there is something wrong with what the model's file holds: problem ends the sentence.
ModelError brokenModel(const std::filesystem::path& path, std::string_view problem);

/// Takes the statement of an object.
ModelObject takeObject(StepScanner& scanner, const ModelInstance& instance, const orv::fc::IfcClass& ifcClass);

/// The class of the instance if that is below IfcObjectDefinition, null otherwise.
const orv::fc::IfcClass* objectClass(const ModelInstance& instance);

} // namespace annotate
