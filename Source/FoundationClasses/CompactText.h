#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace orv::fc {

/// A text of which there are millions. It takes one pointer where it is kept, and one block of memory beside it.
class CompactText {
public:
    explicit CompactText(std::string_view text)
        : lengthAndLetters(text.empty() ? nullptr
                                        : std::make_unique_for_overwrite<char[]>(sizeof(std::size_t) + text.size())) {
        if (lengthAndLetters) {
            const std::size_t length = text.size();
            std::memcpy(lengthAndLetters.get(), &length, sizeof length);
            std::memcpy(lengthAndLetters.get() + sizeof length, text.data(), length);
        }
    }

    CompactText(const CompactText& other) : CompactText(std::string_view(other)) {}
    CompactText(CompactText&&) noexcept = default;
    CompactText& operator=(CompactText other) noexcept {
        lengthAndLetters = std::move(other.lengthAndLetters);
        return *this;
    }
    ~CompactText() = default;

    operator std::string_view() const {
        std::size_t length = 0;
        if (!lengthAndLetters) {
            return {};
        }
        std::memcpy(&length, lengthAndLetters.get(), sizeof length);
        return {lengthAndLetters.get() + sizeof length, length};
    }

private:
    std::unique_ptr<char[]> lengthAndLetters; // null for the empty text
};

} // namespace orv::fc
