// Keeps the tasks that people have with the objects of a model:
//   tasks STORE add OBJECT TITLE [HOURS]   tasks STORE done NUMBER   tasks STORE remove NUMBER   tasks STORE
//   tasks STORE with OTHER-STORE

#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "Host/ReadRecords.h"
#include "Host/Record.h"

#include <iostream>

using namespace orv::domain::shared::enhancementsforreferencemodel;
using orv::host::field;

namespace {

enum class State { Open, Done };

constexpr auto namesOf(State /*state*/) {
    return std::array{orv::host::Name{State::Open, "open"}, orv::host::Name{State::Done, "done"}};
}

/// A kind of record: its name, its fields, and how they are called in the file.
struct Task : orv::host::Record<Task> {
    static constexpr auto entityName = "Task";

    std::string title;
    std::optional<double> hours;
    State state = State::Open;
    std::chrono::sys_seconds since;

    static constexpr auto fields = std::tuple(field("Title", &Task::title), field("Hours", &Task::hours),
                                              field("State", &Task::state), field("Since", &Task::since));
};

std::vector<Task*> tasksAmong(const std::vector<std::unique_ptr<EnhancementBase>>& records) {
    std::vector<Task*> tasks;
    for (const auto& record : records) {
        if (auto* const task = dynamic_cast<Task*>(record.get())) {
            tasks.push_back(task);
        }
    }
    return tasks;
}

std::vector<Task*> allTasks() {
    return tasksAmong(Enhancements::getOrCreateEnhancementsDb()->getRecords());
}

bool add(const std::vector<std::string>& words) {
    auto task = std::make_unique<Task>();
    if (!task->ownerId.boSet(words[2]) || (words.size() > 4 && !orv::host::take(words[4], task->hours.emplace()))) {
        return false;
    }
    task->title = words[3];
    task->since = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    std::vector<std::unique_ptr<EnhancementBase>> added;
    added.push_back(std::move(task));
    return Enhancements::addEnhancements(added); // true once it is on the disk
}

/// The task of that number in the list, from 1 on; null if there is none.
Task* find(const std::string& number) {
    std::size_t place = 0;
    const auto tasks = allTasks();
    return orv::host::take(number, place) && place >= 1 && place <= tasks.size() ? tasks[place - 1] : nullptr;
}

bool finish(Task* task) {
    if (task == nullptr) {
        return false;
    }
    task->state = State::Done;
    return Enhancements::saveChanges();
}

bool remove(const Task* task) {
    return task != nullptr && Enhancements::takeRecord(*task) != nullptr;
}

void list(const std::vector<Task*>& tasks) {
    int number = 0;
    for (const Task* const task : tasks) {
        std::cout << ++number << ". " << task->title << ", " << orv::host::textOf(task->state);
        if (task->hours) {
            std::cout << ", " << orv::host::textOf(*task->hours) << " h";
        }
        std::cout << '\n';
        for (const auto& [name, text] : task->getUnreadTexts()) {
            std::cout << "   " << name << " isn't understood: " << text << '\n';
        }
    }
}

/// Lists a colleague's tasks ahead of ours.
bool listOthers(const std::string& path) {
    const orv::host::RecordsRead read = orv::host::readRecords(path);
    if (read.failure) {
        std::cerr << path << ": " << read.failure->toString() << '\n';
        return false;
    }
    std::cout << "In " << path << ":\n";
    list(tasksAmong(read.records));
    for (const auto& [kind, count] : read.leftOut) {
        std::cout << count << " of the kind " << kind << ", which this program doesn't know\n";
    }
    std::cout << "Ours:\n";
    return true;
}

} // namespace

int main(int count, char** arguments) {
    const std::vector<std::string> words(arguments + 1, arguments + count);
    if (words.empty()) {
        std::cerr << "tasks STORE [add OBJECT TITLE [HOURS] | done NUMBER | remove NUMBER | with STORE]\n";
        return 1;
    }
    Factory::registerClass(std::make_unique<Task>());
    EnhancementsFile::setFilePath(words[0]);
    if (!Enhancements::loadAtOnce()) {
        std::cerr << words[0] << " can't be read, or another program has it locked.\n";
        return 1;
    }
    const std::string command = words.size() > 2 ? words[1] : "";
    const bool isDone = command == "add" && words.size() > 3 ? add(words)
                        : command == "done"                  ? finish(find(words[2]))
                        : command == "remove"                ? remove(find(words[2]))
                        : command == "with"                  ? listOthers(words[2])
                                                             : words.size() == 1;
    if (!isDone) {
        std::cerr << "That can't be done.\n";
        return 1;
    }
    list(allTasks());
}
