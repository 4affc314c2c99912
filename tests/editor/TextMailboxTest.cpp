// Texts from several threads to one.
#include "vstguieditor/TextMailbox.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace zelvatone::test {
namespace {

TEST(TextMailbox, IsEmptyUntilSomethingIsPosted) {
    TextMailbox mailbox;
    std::string text = "untouched";
    EXPECT_FALSE(mailbox.take(text));
    EXPECT_EQ(text, "untouched");
}

TEST(TextMailbox, GivesTheLastTextOnce) {
    TextMailbox mailbox;
    std::string text;
    for (int number = 0; number < 100; ++number) {
        mailbox.post(std::to_string(number));
    }
    EXPECT_TRUE(mailbox.take(text));
    EXPECT_EQ(text, "99");
    EXPECT_FALSE(mailbox.take(text));
}

TEST(TextMailbox, HoldsTextsOfAnyLength) {
    TextMailbox mailbox;
    std::string text;
    for (const std::size_t length : {0U, 15U, 16U, 100000U, 1U}) {
        mailbox.post(std::string(length, 'x'));
        EXPECT_TRUE(mailbox.take(text));
        EXPECT_EQ(text, std::string(length, 'x'));
    }
}

// Each writer posts texts of one letter, of changing length, that end with a count. A text that
// was torn would mix letters; a text out of order would count backwards.
TEST(TextMailbox, KeepsEachTextWholeAndEachWritersOrder) {
    constexpr int kWriters = 4, kPosts = 20000;
    TextMailbox mailbox;
    std::atomic<int> writersLeft = kWriters;
    std::vector<std::thread> writers;
    writers.reserve(kWriters);
    for (int writer = 0; writer < kWriters; ++writer) {
        writers.emplace_back([&, letter = static_cast<char>('a' + writer)] {
            for (int count = 0; count < kPosts; ++count) {
                mailbox.post(std::string(1 + count % 40, letter) + std::to_string(count));
            }
            --writersLeft;
        });
    }
    std::vector<int> lastCount(kWriters, -1);
    std::string text;
    bool isLastLook = false;
    while (!isLastLook) {
        isLastLook = writersLeft == 0;
        if (!mailbox.take(text)) {
            continue;
        }
        const std::size_t letters = text.find_first_not_of(text[0]);
        ASSERT_NE(letters, std::string::npos) << text;
        const int count = std::stoi(text.substr(letters));
        ASSERT_EQ(letters, 1U + count % 40) << text;
        ASSERT_GT(count, lastCount[text[0] - 'a']) << text;
        lastCount[text[0] - 'a'] = count;
    }
    for (std::thread& writer : writers) {
        writer.join();
    }
    // What was seen last is what a thread posted last.
    EXPECT_EQ(text.substr(text.find_first_not_of(text[0])), std::to_string(kPosts - 1));
}

} // namespace
} // namespace zelvatone::test
