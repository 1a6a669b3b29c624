// Processes that share a few files, kills, other programs and short space, all at random: stress [SECONDS [SEED]].
// Whatever happens, what was stored once is in a file or in a kept copy, and each file takes another record.

#include "Stress/Judge.h"
#include "Stress/Worker.h"

#include <array>
#include <chrono>
#include <csignal>
#include <sched.h>
#include <sys/mount.h>

namespace orv::stress {
namespace {

using Clock = std::chrono::steady_clock;
using Events = std::map<char, int>; // how many of each: the journal's, and those counted here
using Space = Round::Space;

constexpr std::size_t smallSize = 512 << 10;

/// Puts a document there whose writing takes so long that kills come within it.
void fill(const Round& round, Dice& dice) {
    const std::string indent(1 + dice.below(3), ' ');
    std::string document = "<Enhancements>\n";
    for (unsigned number = dice.below(20); number > 0; --number) {
        const std::string text = "large " + std::to_string(number);
        document +=
            indent + "<Note><Text>" + text + "</Text><Content>" + std::string(100'000, '.') + "</Content></Note>\n";
        round.note('=', text);
    }
    setContent(round.anyStore(dice), document + "</Enhancements>\n");
}

/// Does to a file what other programs do that keep to its lock.
void disturb(const Round& round, Dice& dice, Judge& judge) {
    const fs::path path = round.anyStore(dice);
    if (!fs::exists(path)) {
        return;
    }
    const ScopeGuard held = hold(path, LOCK_EX);
    const std::string content = contentOf(path);
    const auto half = content.size() / 2;
    const std::string unique = "other " + std::to_string(dice());
    const std::string mark = "<Edit>" + unique + "</Edit>";
    const std::string spoilt[] = {content.substr(0, dice.below(content.size() + 1)) + mark, "<Foreign>" + mark,
                                  content.substr(0, half) + std::string(half, '<') + mark};
    const unsigned action = dice.below(7);
    if (action < 3) {
        judge.sawDestroyed(path);
        setContent(path, spoilt[action]);
        if (contentOf(path) == spoilt[action]) {
            round.note('=', unique);
        }
    } else if (action == 3) {
        judge.sawDestroyed(path);
        fs::remove(path);
    } else if (action == 4) { // writes the same again
        std::fstream(path, std::ios_base::in | std::ios_base::out | std::ios_base::binary) << content;
    } else if (action == 5) {
        ::usleep(dice.below(20'000));
    } else if (const auto end = content.rfind("</Enhancements>"); end != std::string::npos) {
        // Puts another file in its place, as editors do.
        const std::string edited = std::string(content).insert(end, mark);
        const fs::path other = path.native() + ".new";
        judge.sawDestroyed(path);
        setContent(other, edited);
        if (contentOf(other) == edited) {
            fs::rename(other, path);
            round.note('=', unique);
        }
        fs::remove(other);
    }
}

void work(const Round& round, Dice& dice, Judge& judge, Events& events) {
    int count = 0;
    const auto start = [&] {
        Worker worker(round, ++count, dice());
        const pid_t process = ::fork();
        if (process == 0) {
            worker.live();
            ::_exit(0);
        }
        if (process == -1) { // which is everybody to kill(2)
            throw std::runtime_error("no process");
        }
        return process;
    };
    std::array<pid_t, 4> workers{start(), start(), start(), start()};
    const auto end = Clock::now() + std::chrono::milliseconds(1000 + dice.below(1000));
    while (Clock::now() < end) {
        ::usleep(dice.below(4000));
        pid_t& worker = workers.at(dice.below(workers.size()));
        const bool isToDie = dice.below(3) == 0 && ::kill(worker, SIGKILL) == 0;
        int status = 0;
        if (::waitpid(worker, &status, isToDie ? 0 : WNOHANG) == worker) {
            const bool isKilled = isToDie && WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
            judge.check(isKilled || status == 0, "a process ended with status " + std::to_string(status));
            ++events[isKilled ? 'd' : 'e'];
            worker = start();
        }
        if (round.isShared) {
            judge.read(round.anyStore(dice));
            ++events['r'];
        } else if (dice.below(8) == 0) {
            disturb(round, dice, judge);
            ++events['c'];
        }
        if (round.space == Space::Small && dice.below(20) == 0) {
            setContent(round.stores / "filler", std::string(dice.below(smallSize), ' '));
        }
    }
    for (const pid_t worker : workers) {
        ::kill(worker, SIGKILL);
        ::waitpid(worker, nullptr, 0);
    }
}

/// Returns the number of violations.
int run(Dice& dice, Events& events) {
    static const bool canMount =
        ::unshare(CLONE_NEWNS) == 0 && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    const tests::TemporaryDirectory directory;
    Round round{directory / "stores", directory / "journal", static_cast<Space>(dice.below(3)), dice.below(3) == 0};
    const char* stores = round.stores.c_str();
    fs::create_directory(stores);
    const std::string size = "size=" + std::to_string(smallSize);
    if (round.space == Space::Small && (!canMount || ::mount("tmpfs", stores, "tmpfs", 0, size.c_str()) != 0)) {
        round.space = Space::Limited;
    }
    if (round.space == Space::Ample) {
        fill(round, dice);
    }
    Judge judge;
    work(round, dice, judge, events);
    if (round.space == Space::Small) {
        fs::remove(round.stores / "filler");
        ::mount(nullptr, stores, nullptr, MS_REMOUNT, "size=50%");
    }
    const int violations = judge.judge(round, events);
    if (violations > 0) {
        const std::string evidence = round.stores.parent_path().native() + "-evidence";
        fs::copy(round.stores, evidence, fs::copy_options::recursive);
        std::cerr << "files in " << evidence << ", space " << static_cast<int>(round.space) << '\n';
    }
    if (round.space == Space::Small) {
        ::umount2(stores, MNT_DETACH);
    }
    return violations;
}

int stress(std::chrono::seconds duration, Dice::result_type seed) {
    const auto start = Clock::now();
    Dice dice(seed);
    Events events;
    int violations = 0;
    while (violations == 0 && Clock::now() - start < duration) {
        violations = run(dice, events);
        ++events['R'];
    }
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - start).count();
    std::cout << events['+'] + events['~'] << " additions accepted (" << events['~'] << " not seen in the file), "
              << events['!'] << " refused, " << events['d'] << " kills, " << events['d'] + events['e'] << " restarts, "
              << events['>'] << " path changes, " << events['*'] << " changed and " << events['-'] << " taken out, "
              << events['r'] << " readings, " << events['c'] << " corruptions, " << events['k'] << " kept copies, "
              << violations << " violations, " << events['R'] << " rounds, " << seconds << " s, seed " << seed << '\n';
    return violations == 0 ? 0 : 1;
}

} // namespace
} // namespace orv::stress

int main(int argc, char** argv) { // NOLINT(bugprone-exception-escape): it is told, and ends the process
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN)); // a write at a limit fails
    const std::chrono::seconds duration(argc > 1 ? std::strtol(argv[1], nullptr, 10) : 30);
    return orv::stress::stress(duration, argc > 2 ? std::strtoull(argv[2], nullptr, 10) : std::random_device()());
}
