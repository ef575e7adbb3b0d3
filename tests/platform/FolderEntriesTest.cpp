#include "base/FolderEntries.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

class FolderEntriesTest : public ::testing::Test {
protected:
    ~FolderEntriesTest() override { std::filesystem::remove_all(root_); } // what the toolkit's own remover can't spell, too
    void file(const std::string& name) const { std::ofstream(root_ / name) << "x"; }
    QTemporaryDir folder_;
    std::filesystem::path root_ = folder_.path().toStdString();
};

TEST_F(FolderEntriesTest, EveryEntryIsWhatItLeadsToUnderTheBytesOfItsName) {
    file("caf\xc3\xa9.mov");
    file("caf\xe9.mov");
    file(".hidden.mov");
    std::filesystem::create_directory(root_ / "\xff\xfe");
    std::filesystem::create_symlink("\xff\xfe", root_ / "there");
    std::filesystem::create_symlink("caf\xe9.mov", root_ / "one.mov");
    std::filesystem::create_symlink("nowhere", root_ / "lost.mov");
    ASSERT_EQ(::mkfifo((root_ / "pipe.mov").c_str(), 0600), 0);
    auto entries = entriesOf(folder_.path());
    std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
    std::vector<std::pair<QByteArray, EntryKind>> found;
    for (const FolderEntry& entry : entries)
        found.emplace_back(entry.name, entry.kind);
    using Kind = EntryKind;
    EXPECT_EQ(found, (std::vector<std::pair<QByteArray, Kind>>{{"caf\xc3\xa9.mov", Kind::file},
                                                               {"caf\xe9.mov", Kind::file},
                                                               {"lost.mov", Kind::other},
                                                               {"one.mov", Kind::file},
                                                               {"pipe.mov", Kind::other},
                                                               {"there", Kind::linkedFolder},
                                                               {"\xff\xfe", Kind::folder}}));
    EXPECT_TRUE(entriesOf(folder_.path() + u"/none"_s).empty());
}

TEST_F(FolderEntriesTest, WhatIsNoTextIsShownByteByByteAndFoundAgainByWhatIsLeftOfIt) {
    EXPECT_EQ(textOfName("caf\xc3\xa9"), u"café"_s);
    EXPECT_FALSE(textOfName("caf\xe9"));
    EXPECT_FALSE(textOfName("\xed\xa0\x80")) << "half of a character of two units";
    EXPECT_EQ(shownName("caf\xe9 \xc3\xa9\xf0\x9f\x8e\xac\xff.mov"), u"caf\\xE9 é\U0001F3AC\\xFF.mov"_s);
    EXPECT_EQ(shownName("\xc3"), u"\\xC3"_s) << "cut off";

    file("caf\xe9.mov");
    file("spelt\xef\xbf\xbd.mov");
    EXPECT_EQ(lostName(folder_.filePath(u"caf\uFFFD.mov"_s)), QByteArray("caf\xe9.mov"));
    EXPECT_FALSE(lostName(folder_.filePath(u"spelt\uFFFD.mov"_s))) << "its name has that character";
    EXPECT_FALSE(lostName(folder_.filePath(u"missing.mov"_s)));
    EXPECT_EQ(lostName(folder_.filePath(u"\uFFFD/a\uFFFD.mov"_s)), QByteArray("a\xef\xbf\xbd.mov"));

    LeftOutNames names;
    for (const char* name : {"a\xe9", "\xff/", "c\xe9", "d\xe9"})
        names.add(name);
    EXPECT_EQ(names.count, 4);
    EXPECT_EQ(names.list(), u"a\\xE9, \\xFF/, c\\xE9, …"_s);
}

} // namespace
} // namespace daylark
