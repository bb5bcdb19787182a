#include <gtest/gtest.h>

#include <string>

#include "base/Hash.h"
#include "base/HashTable.h"

using tavrin::base::Hash;
using tavrin::base::HashTable;

TEST(Hash, MatchesCaseFoldedFnv1a) {
    EXPECT_EQ(Hash(std::string(), '\0'), 2166136261u);
    EXPECT_EQ(Hash(std::string("a"), '\0'), 3826002220u);
    EXPECT_EQ(Hash(std::string("A"), '\0'), 3826002220u);
    EXPECT_EQ(Hash(std::string("foobar"), '\0'), 3214735720u);
    EXPECT_EQ(Hash("FooBar"), 3214735720u);
    EXPECT_EQ(Hash(static_cast<const char*>(nullptr)), 0u);
}

TEST(Hash, StopsAtStopCharacterAndEmbeddedNul) {
    EXPECT_EQ(Hash(std::string("ab-cd"), '-'), Hash("ab"));
    // The stop character is compared before folding.
    EXPECT_EQ(Hash(std::string("aBc"), 'b'), Hash("abc"));
    EXPECT_EQ(Hash(std::string("ab\0cd", 5), '\0'), Hash("ab"));
    // Bytes above 127 are hashed unchanged, not folded.
    EXPECT_NE(Hash("\xC0"), Hash("\xE0"));
}

TEST(HashTable, LooksUpCaseInsensitivelyAndKeepsFirstKeyText) {
    HashTable<std::string, int> table;
    table["Name"] = 1;
    EXPECT_NE(table.find("name"), table.end());
    EXPECT_EQ(table["NAME"], 1);
    ASSERT_EQ(table.size(), 1u);
    EXPECT_EQ(table.front().key, "Name");
    EXPECT_EQ(table.find("other"), table.end());
}

TEST(HashTable, AppendsMissingKeysAtTheEnd) {
    HashTable<std::string, int> table;
    EXPECT_EQ(table.find("x"), table.end());
    table["b"] = 2;
    table["a"] = 1;
    table["c"];
    ASSERT_EQ(table.size(), 3u);
    EXPECT_EQ(table[0].key, "b");
    EXPECT_EQ(table[1].key, "a");
    EXPECT_EQ(table[2].key, "c");
    EXPECT_EQ(table[2].value, 0);
}

TEST(HashTable, DifferentKeysOfOneHashShareAnEntry) {
    ASSERT_EQ(Hash("costarring"), Hash("liquid"));
    HashTable<std::string, int> table;
    table["costarring"] = 7;
    EXPECT_EQ(table["liquid"], 7);
    ASSERT_EQ(table.size(), 1u);
    EXPECT_EQ(table.front().key, "costarring");
    EXPECT_EQ(table.find("liquid"), table.begin());
}

TEST(HashTable, OldestEntryOfAHashWins) {
    HashTable<std::string, int> table;
    table.emplace_back(Hash("k"), std::string("k"), 1);
    table.emplace_back(Hash("K"), std::string("K"), 2);
    EXPECT_EQ(table["k"], 1);
    EXPECT_EQ(table.find("K")->key, "k");
}
