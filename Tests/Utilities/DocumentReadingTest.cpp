#include "Utilities/DocumentReading.h"

#include "Support/CoarseTimes.h"
#include "Support/StoreTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

namespace orv::utilities {
namespace {

using tests::setContent;

int readsAhead;
std::function<void()> whileReading;

/// Reads few bytes at a time and lets others write between two of them.
class DocumentReadingTest : public tests::StoreTest {
protected:
    DocumentReadingTest() {
        static const auto read = systemCalls.readAt;
        systemCalls.readAt = [](Handle file, char* buffer, std::size_t size, std::uint64_t position,
                                std::size_t& count) {
            if (readsAhead-- == 0) {
                std::exchange(whileReading, nullptr)();
            }
            return read(file, buffer, std::min<std::size_t>(size, 40), position, count);
        };
    }

    /// What is read if the action comes before the read of that number.
    std::string read(int number, const std::function<void()>& action) {
        readsAhead = number;
        whileReading = action;
        std::error_code error;
        const auto reading = readDocument(path, error);
        EXPECT_FALSE(error) << error.message();
        return reading ? reading->content : "";
    }
};

TEST_F(DocumentReadingTest, returnsWhatStoodThereAtOneMomentWhileOthersAdd) {
    int number = 0;
    do {
        setContent(path, document({"a"}));
        std::this_thread::sleep_for(std::chrono::milliseconds(60)); // until its times are trusted
        const std::string content =
            read(number++, [] { EXPECT_EQ(tests::inAnotherProcess([] { return std::to_string(add("b")); }), "1"); });
        EXPECT_TRUE(content == document({"a"}) || content == document({"a", "b"})) << content;
    } while (!whileReading);
    EXPECT_GT(number, 3);
}

TEST_F(DocumentReadingTest, returnsWhatStoodThereAtOneMomentWhereTheTimesTellNothing) {
    const tests::CoarseTimes coarse;
    int number = 0;
    do {
        setContent(path, document({"a", "b"}));
        const std::string content = read(number++, [this] { setContent(path, document({"c", "d"})); });
        EXPECT_TRUE(content == document({"a", "b"}) || content == document({"c", "d"})) << content;
    } while (!whileReading);
    EXPECT_GT(number, 3);
}

} // namespace
} // namespace orv::utilities
