#include "host/WebDirectory.h"

#include <gtest/gtest.h>

namespace
{
WSIItem person(const std::string& id, const std::string& first, const std::string& last, const std::string& number)
{
    WSIItem item;
    item.id = id;
    item.firstName = first;
    item.lastName = last;
    item.homeNumber = number;
    return item;
}

/** "1 2": the ids of what was found, in order. */
std::string idsOf(const std::vector<WSIItem>& items)
{
    std::string ids;
    for (const WSIItem& item : items)
    {
        ids += (ids.empty() ? "" : " ") + item.id + item.searchId;
    }
    return ids;
}

TEST(WebDirectoryTest, FindsByNamesAndByFirstDigits)
{
    Host::WebDirectory directory;
    directory.put(person("1", "Anna", "Berg", "+49 (30) 2312-5000"));
    directory.put(person("2", "Hanno", "Berg", "030 23125000"));
    directory.put(person("3", "Zoé", "Anders", ""));
    WSIItem told = person("2", "Hanno", "Vogt", "0511 1");
    told.searchId = "told";
    EXPECT_TRUE(directory.put(told));
    EXPECT_FALSE(directory.put(person("", "Anna", "Nobody", "1")));
    const struct
    {
        std::string text;
        int max;
        std::string found;
    } searches[] = {{"an", 50, "1 2 3"}, {"AN", 2, "1 2"}, {" be  ann", 50, "1"}, {"berg", 50, "1"},
                    {"vogt", 50, "2"},   {" ", 50, ""},    {"x", 50, ""},         {"an", 0, ""}};
    for (const auto& one : searches)
    {
        std::vector<WSIItem> items;
        directory.search(one.text, 4, one.max, items);
        EXPECT_EQ(idsOf(items), one.found) << one.text;
    }
    for (const auto& [digits, found] : {std::pair("4930", "1"), {"0511", "2"}, {"030", ""}})
    {
        std::vector<WSIItem> items;
        EXPECT_TRUE(directory.searchPhonebook(digits, items));
        EXPECT_EQ(idsOf(items), found) << digits;
    }
    directory.deleteItem("1");
    directory.deleteItem("1");
    std::vector<WSIItem> items;
    directory.search("a", 4, 50, items);
    EXPECT_EQ(idsOf(items), "2 3");
}
} // namespace
