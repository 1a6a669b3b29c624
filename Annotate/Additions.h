#pragma once

#include "Annotate/Arguments.h"
#include "Annotate/Notes.h"
#include "Annotate/SetsOfObjects.h"

#include <cstdint>
#include <vector>

namespace annotate {

struct AddedNote {
    std::int64_t number = 0;
    const Note* note = nullptr;
    const ModelObject* object = nullptr; ///< Null if the model no longer has it.
    const ModelObject* storey = nullptr; ///< Null if the object is in none.
};

struct AddedEdit {
    const EditIndex::Entry* entry = nullptr;
    const ModelObject* object = nullptr;
    const ModelObject* storey = nullptr;
    MergedProperty property; ///< Without the model's if the object has vanished.
};

/// What users added to a model, each with what it is on.
class Additions {
public:
    /// Throws what reading the model or the store throws.
    explicit Additions(const Arguments& arguments);
    Additions(const Additions&) = delete;
    Additions& operator=(const Additions&) = delete;
    ~Additions() = default;

    const ModelDetails& getDetails() const { return details; }

    /// In the order of the store.
    const std::vector<AddedNote>& getNotes() const { return notes; }

    /// The latest of each property, without those that were unset; in the order in which the properties came first.
    const std::vector<AddedEdit>& getEdits() const { return edits; }

private:
    ModelDetails details;
    Records records;
    EditIndex index{records};
    SetsOfObjects sets{details};
    std::vector<AddedNote> notes;
    std::vector<AddedEdit> edits;
};

} // namespace annotate
