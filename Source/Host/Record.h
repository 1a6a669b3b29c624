#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementBase.h"
#include "Host/Field.h"
#include "Host/TextsAsRead.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace orv::host {

/// A kind of record that is declared by its name and its fields; the operations of EnhancementBase follow from these:
///
///     struct Task : orv::host::Record<Task> {
///         static constexpr auto entityName = "Task";
///         std::string title;
///         std::optional<double> hours;
///         std::vector<std::string> tags;
///         static constexpr auto fields = std::tuple(orv::host::field("Title", &Task::title),
///                                                   orv::host::field("Hours", &Task::hours),
///                                                   orv::host::field("Tag", &Task::tags));
///     };
///
/// A field is an element of its name; Host/Field.h says what can be one, and Host/FieldText.h in which text. A vector
/// has an element for each value. An optional or a vector without a value is an empty element, and has none when there
/// is no element; any other field for which there is none keeps its default.
///
/// What stands in the file is written back as it stands until the program sets the field, so "1.50" stays "1.50"; also
/// a text that the field can't take, which leaves it at its default. A field counts as set, for good, once the
/// attributes are asked for, as each save does, while its value isn't the one that the reading left. To have a value
/// that equals the one that was read written anew, call setAsItIs.
template <typename Kind>
class Record : public domain::shared::enhancementsforreferencemodel::EnhancementBase {
public:
    std::string getEntityName() const override { return Kind::entityName; }

    std::vector<std::pair<std::string, object::PropertyValue>> getAttributes() const override {
        std::vector<std::pair<std::string, object::PropertyValue>> attributes;
        attributes.reserve(std::tuple_size_v<decltype(Kind::fields)>);
        forEachField([&](const char* name, std::vector<std::string>& texts) {
            textsAsRead.appendAttributes(name, texts, attributes);
        });
        return attributes;
    }

    void setAttributes(const std::vector<std::pair<std::string, std::string>>& attributes) override {
        EnhancementBase::setAttributes(attributes);
        textsAsRead.clear();
        std::apply([&](const auto&... field) { (readField(field, attributes), ...); }, Kind::fields);
    }

    std::unique_ptr<EnhancementBase> createInstance() const override {
        static_assert(hasDistinctNames(), "Each field of a record has a name of its own, which isn't \"OwnerId\".");
        return std::make_unique<Kind>();
    }

    /// The fields with a text that they couldn't take and that the program hasn't set since: name and text, a pair for
    /// each text of such a field.
    std::vector<std::pair<std::string, std::string>> getUnreadTexts() const {
        std::vector<std::pair<std::string, std::string>> unread;
        forEachField([&](const char* name, const std::vector<std::string>& texts) {
            textsAsRead.appendUnread(name, texts, unread);
        });
        return unread;
    }

    /// Counts the field of that name as set by the program to the value that it has.
    void setAsItIs(std::string_view name) { textsAsRead.forget(name); }

private:
    template <typename T>
    static void appendTexts(const T& value, std::vector<std::string>& texts) {
        FieldForm<T>::appendTexts(value, texts);
    }

    /// Calls the action with the name of each field and the texts of its value, which it may move out.
    template <typename Action>
    void forEachField(Action action) const {
        const auto& self = static_cast<const Kind&>(*this);
        std::vector<std::string> texts;
        const auto act = [&](const auto& field) {
            texts.clear();
            appendTexts(self.*field.member, texts);
            action(field.name, texts);
        };
        std::apply([&](const auto&... field) { (act(field), ...); }, Kind::fields);
    }

    template <typename FieldOfKind>
    void readField(const FieldOfKind& field, const std::vector<std::pair<std::string, std::string>>& attributes) {
        std::vector<std::string> texts;
        for (const auto& [name, text] : attributes) {
            if (name == field.name) {
                texts.push_back(text);
            }
        }
        auto& value = static_cast<Kind&>(*this).*field.member;
        const bool isTaken = FieldForm<std::remove_reference_t<decltype(value)>>::take(texts, value);
        std::vector<std::string> textsOfValue;
        appendTexts(value, textsOfValue);
        textsAsRead.keep(field.name, std::move(texts), std::move(textsOfValue), isTaken);
    }

    static constexpr bool hasDistinctNames() {
        return std::apply(
            [](const auto&... field) {
                const std::array<std::string_view, 1 + sizeof...(field)> names{"OwnerId", field.name...};
                for (auto name = names.begin(); name != names.end(); ++name) {
                    if (std::find(names.begin(), name, *name) != name) {
                        return false;
                    }
                }
                return true;
            },
            Kind::fields);
    }

    mutable TextsAsRead textsAsRead; // being asked for the attributes tells that a field has been set
};

} // namespace orv::host
