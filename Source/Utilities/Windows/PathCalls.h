#pragma once

#include <filesystem>
#include <system_error>
#include <windows.h>

// Those of SystemCalls that go by paths, and what they have in common with the others.

namespace orv::utilities {

/// Whether it names another file or directory. Files that a service keeps elsewhere are reparse points as well.
bool isLink(HANDLE file);

/// The path of what is open, with \\?\ ahead.
std::errc pathOf(HANDLE file, std::filesystem::path& path);

std::errc renamePath(const std::filesystem::path& from, const std::filesystem::path& to);
std::errc removePath(const std::filesystem::path& path);
std::errc makeDirectory(const std::filesystem::path& path);
std::errc readLink(const std::filesystem::path& link, std::filesystem::path& target);

} // namespace orv::utilities
