#include "zorv/core/quoted_tokens.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "zorv/core/field_splitter.h"

namespace {

using Tokens = std::vector<std::string>;

Tokens Cut(std::string text, const char* delimiters) {
    Tokens tokens;
    text += '\0';
    text += "beyond, the terminator";
    for (char* token = strstok(text.data(), delimiters, '"'); token; token = strstok(nullptr, delimiters, '"'))
        tokens.push_back(token);
    EXPECT_EQ(strstok(nullptr, delimiters, '"'), nullptr);
    EXPECT_TRUE(text.ends_with("beyond, the terminator"));
    return tokens;
}

Tokens CutRange(std::string text) {
    const zorv::detail::DelimiterSet set(", ");
    // What stands right behind the range stays untouched and unread.
    std::string memory = text + "\"rest";
    zorv::detail::FieldSplitter splitter(memory.data(), memory.data() + text.size(), set, '"');
    Tokens tokens;
    for (std::string_view field = splitter.Next(); field.data(); field = splitter.Next())
        tokens.emplace_back(field);
    EXPECT_TRUE(memory.ends_with("\"rest"));
    return tokens;
}

TEST(QuotedTokens, CutsAtDelimitersAndKeepsQuotedOnes) {
    struct {
        const char* text;
        Tokens tokens;
    } const rows[] = {
        {"\"a b\",c", {"a b", "c"}},
        {" ,,a,\tb  c,", {"a", "\tb", "c"}},
        {"", {}},
        {" , ", {}},
        {"\"\" x", {"", "x"}},
        {"\"", {""}},
        {"a \"open, end", {"a", "open, end"}},
        {"a \"closed\"", {"a", "closed"}},
        {"\"a\"bc d", {"a", "c", "d"}},  // the character behind a quote counts as a delimiter
        {"a\"b c\"", {"a\"b", "c\""}},
    };
    for (const auto& [text, tokens] : rows) {
        EXPECT_EQ(Cut(text, ", "), tokens) << text;
        EXPECT_EQ(CutRange(text), tokens) << text;
    }
    EXPECT_EQ(Cut("a,b", ""), (Tokens{"a,b"}));
}

TEST(QuotedTokens, DelimitersMayChangeFromCallToCall) {
    std::string text = "name=a,b;c";
    EXPECT_STREQ(strstok(text.data(), "=", 0), "name");
    EXPECT_STREQ(strstok(nullptr, ";", 0), "a,b");
    EXPECT_STREQ(strstok(nullptr, nullptr, 0), "c");
    EXPECT_EQ(strstok(nullptr, nullptr, 0), nullptr);
}

}  // namespace
