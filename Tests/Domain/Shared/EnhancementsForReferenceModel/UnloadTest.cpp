// The program knows the libraries through plug-ins alone.

#include "Support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <bit>
#include <dlfcn.h>
#include <link.h>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace orv::tests {
namespace {

std::multiset<std::string> told;

/// The files that the process has loaded and that are the project's own.
std::set<std::string> loadedFiles() {
    std::set<std::string> files;
    const auto insert = [](dl_phdr_info* file, std::size_t /*size*/, void* names) {
        if (std::string_view(file->dlpi_name).find("Orv") != std::string_view::npos) {
            static_cast<std::set<std::string>*>(names)->insert(file->dlpi_name);
        }
        return 0;
    };
    ::dl_iterate_phdr(insert, &files);
    return files;
}

TEST(Unloading, destroysWhatAPluginLeftBehindAndLetsTheNextLoadBeginAnew) {
    const TemporaryDirectory directory;
    for (const std::string plugin : {PLUGIN_DEFAULT, PLUGIN_HIDDEN, PLUGIN_DEFAULT, PLUGIN_HIDDEN}) {
        void* const library = ::dlopen(plugin.c_str(), RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(library, nullptr) << ::dlerror();
        EXPECT_NE(loadedFiles(), std::set<std::string>());
        auto* const use = std::bit_cast<void (*)(const char*, void (*)(const char*))>(::dlsym(library, "use"));
        use((directory / "store.xml").c_str(), [](const char* text) { told.insert(text); });
        EXPECT_EQ(std::exchange(told, {}), (std::multiset<std::string>{"fresh", "report", "1"})) << plugin;
        EXPECT_EQ(::dlclose(library), 0);
        EXPECT_EQ(std::exchange(told, {}),
                  (std::multiset<std::string>{"kind", "object", "read-only", "read-write", "receiver", "record"}));
        EXPECT_EQ(loadedFiles(), std::set<std::string>());
        directory.empty();
    }
}

} // namespace
} // namespace orv::tests
