// Reading the list of published versions.
#include "platform/linux/feed/appcast.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

Appcast read(const std::string& items) {
    return parseAppcast(QByteArray::fromStdString(
        R"(<?xml version="1.0"?><!-- a comment --><rss xmlns:s="http://www.andymatuschak.org/xml-namespaces/sparkle">)"
        "<channel><title>Tarvik</title>" +
        items + "</channel></rss>"));
}

std::string described(const Appcast& appcast) {
    if (appcast.malformed)
        return "malformed";
    if (!appcast.newest)
        return "nothing";
    return (appcast.newest->version + '|' + appcast.newest->shortVersion + '|' + appcast.newest->page).toStdString();
}

TEST(Appcast, whereVersionsMayStand) {
    struct {
        const char* items;
        const char* expected;
    } const cases[] = {
        {"<item><s:version>7</s:version></item>", "7|7|"},
        {"<item><s:shortVersionString>1.2</s:shortVersionString><s:version> 7 </s:version></item>", "7|1.2|"},
        {"<item><enclosure url='x' s:version='7' s:shortVersionString='1.2'/></item>", "7|1.2|"},
        {"<item><enclosure s:version='8'/><s:version>7</s:version></item>", "7|7|"},
        {"<item><enclosure version='8'/><version>7</version><s:shortVersionString>1</s:shortVersionString></item>",
         "nothing"},
        {"<item><s:version>9</s:version></item><item><s:version>10</s:version></item><item><s:version>2</s:version>"
         "</item>",
         "10|10|"},
        // For others.
        {"<item><s:version>9</s:version><enclosure s:os='macos'/></item>", "nothing"},
        {"<item><s:version>9</s:version><s:os>windows</s:os></item>", "nothing"},
        {"<item><s:version>9</s:version><s:channel>beta</s:channel></item>", "nothing"},
        {"<item><s:version>9</s:version><enclosure s:os='linux'/></item>", "9|9|"},
        // Pages.
        {"<item><s:version>9</s:version><link> https://e.org/9?a=b&amp;c </link></item>", "9|9|https://e.org/9?a=b&c"},
        {"<item><s:version>9</s:version><link>http://e.org</link></item>", "9|9|"},
        {"<item><s:version>9</s:version><link>javascript:x</link><s:releaseNotesLink>https://e.org/n"
         "</s:releaseNotesLink></item>",
         "9|9|https://e.org/n"},
        {"<item><s:version>9\n<b>0</b>1</s:version></item>", "9 1|9 1|"},
    };
    for (const auto& [items, expected] : cases)
        EXPECT_EQ(described(read(items)), expected) << items;
}

TEST(Appcast, whatIsNoFeed) {
    for (const char* text : {"", " ", "{}", "<rss>", "<rss/><rss/>", "<html><channel/></html>", "<rss><channel></rss>",
                             "<!DOCTYPE rss><rss><channel/></rss>", "<rss><channel>&unknown;</channel></rss>"})
        EXPECT_EQ(described(parseAppcast(text)), "malformed") << text;
    EXPECT_EQ(described(read("<item><s:version>9</s:version></item><item><s:version>")), "malformed");
    EXPECT_EQ(described(parseAppcast("<rss/>")), "nothing");
}

TEST(Appcast, textsAreShort) {
    const auto appcast = read("<item><s:version>" + std::string(5000, '9') + "</s:version><link>https://e.org/" +
                              std::string(5000, 'a') + "</link></item>");
    ASSERT_TRUE(appcast.newest);
    EXPECT_EQ(appcast.newest->version.size(), 200);
    EXPECT_TRUE(appcast.newest->page.isEmpty());
}

} // namespace
} // namespace tarvik
