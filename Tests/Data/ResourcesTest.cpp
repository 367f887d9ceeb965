#include "MacToolbox/Data/Resources.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Data/HostDisk.h"

#include <filesystem>
#include <fstream>
#include <map>

#include <gtest/gtest.h>
#include <unistd.h>

using namespace MacToolbox;

namespace {

struct Item {
    const char* type;
    Int id;
    std::string data;
    const char* name = nullptr;
};

/// A resource file by the book; written here independently of the compiler.
Bytes fileOf(const std::vector<Item>& items)
{
    std::vector<std::string> types;
    for (const Item& item : items)
        if (std::find(types.begin(), types.end(), item.type) == types.end())
            types.emplace_back(item.type);
    ByteWriter data, references, names, typeList;
    typeList.u16(I(types.size()) - 1);
    for (const std::string& type : types) {
        typeList.u32(os(type));
        typeList.u16(std::count_if(items.begin(), items.end(), [&](const Item& i) { return i.type == type; }) - 1);
        typeList.u16(2 + I(types.size()) * 8 + I(references.bytes.size()));
        for (const Item& item : items) {
            if (item.type != type)
                continue;
            references.u16(item.id);
            references.u16(item.name ? I(names.bytes.size()) : 0xFFFF);
            if (item.name)
                names.raw(pstr(item.name));
            references.u32(I(data.bytes.size()));
            references.u32(0);
            data.u32(I(item.data.size()));
            data.raw(Bytes(item.data.begin(), item.data.end()));
        }
    }
    const Int map = 16 + I(data.bytes.size());
    ByteWriter out;
    out.u32(16);
    out.u32(map);
    out.zeros(8);
    out.raw(data.bytes);
    out.zeros(24);
    out.u16(28);
    out.u16(28 + I(typeList.bytes.size() + references.bytes.size()));
    out.raw(typeList.bytes);
    out.raw(references.bytes);
    out.raw(names.bytes);
    return out.bytes;
}

class Resources : public testing::Test {
protected:
    void SetUp() override
    {
        startRunAfresh();
        folder_ = testing::TempDir() + "resources-" + std::to_string(::getpid());
        std::filesystem::create_directories(folder_);
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::string write(const char* name, const Bytes& bytes) const
    {
        const std::string path = folder_ + '/' + name;
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
        return path;
    }

    Int open(const char* name, const std::vector<Item>& items) const
    {
        return ResourceManager::shared().open(write(name, fileOf(items)));
    }

    std::string folder_;
};

std::string text(const Handle& h) { return h ? std::string(h->bytes.begin(), h->bytes.end()) : "nil"; }

} // namespace

TEST_F(Resources, SearchGoesFromTheCurrentFileToOlderOnes)
{
    EXPECT_EQ(GetResource(os("TEXT"), 1), nullptr);
    EXPECT_EQ(ResError(), -192);
    const Int older = open("a", {{"TEXT", 1, "one"}, {"TEXT", -7, "old"}, {"DATA", 1, ""}});
    const Int newer = open("b", {{"TEXT", 2, "two"}, {"TEXT", 1, "new"}});
    ASSERT_EQ(older, 2);
    ASSERT_EQ(newer, 3);
    EXPECT_EQ(CurResFile(), 3);
    EXPECT_EQ(text(GetResource(os("TEXT"), 1)), "new");
    EXPECT_EQ(text(GetResource(os("TEXT"), -7)), "old");
    EXPECT_EQ(ResError(), 0);
    EXPECT_EQ(text(Get1Resource(os("TEXT"), -7)), "nil");
    EXPECT_EQ(CountResources(os("TEXT")), 4);
    EXPECT_EQ(Count1Resources(os("TEXT")), 2);

    const Handle fromNewer = GetResource(os("TEXT"), 1);
    UseResFile(older);
    EXPECT_EQ(text(GetResource(os("TEXT"), 2)), "nil") << "a file opened after the current one is not searched";
    EXPECT_EQ(text(GetResource(os("TEXT"), 1)), "one");
    EXPECT_NE(GetResource(os("TEXT"), 1), fromNewer);
    UseResFile(0);
    UseResFile(-1);
    EXPECT_EQ(CurResFile(), older);
    UseResFile(99); // unknown: the last file is searched first
    EXPECT_EQ(text(GetResource(os("TEXT"), 2)), "two");

    EXPECT_EQ(ResourceManager::shared().open(folder_ + "/missing"), -1);
    EXPECT_EQ(ResError(), -43);
    EXPECT_EQ(ResourceManager::shared().open(folder_), -1) << "a folder is no file";
}

TEST_F(Resources, OneHandleIsSharedUntilItIsReleased)
{
    open("a", {{"TEXT", 1, "fresh"}});
    const Handle first = GetResource(os("TEXT"), 1);
    first->bytes[0] = 'F';
    EXPECT_EQ(GetResource(os("TEXT"), 1), first);
    EXPECT_TRUE(first->isResource());
    ReleaseResource(first);
    const Handle second = GetResource(os("TEXT"), 1);
    EXPECT_NE(second, first);
    EXPECT_EQ(text(second), "fresh");
    DetachResource(second);
    EXPECT_FALSE(second->isResource());
    EXPECT_EQ(second->resID, 1);
    EXPECT_NE(GetResource(os("TEXT"), 1), second);
    ReleaseResource(nullptr);
    DetachResource(nullptr);
    EXPECT_EQ(SizeRsrc(nullptr), -1);
}

TEST_F(Resources, IndexesTypesAndNames)
{
    open("a", {{"TEXT", 5, "by name", "Ann"}, {"TEXT", 6, "", ""}, {"DATA", 1, "d"}});
    open("b", {{"DATA", 9, "e"}, {"TEXT", 7, "second"}, {"TEXT", 5, "hides"}});
    OSType type = 1;
    EXPECT_EQ(Count1Types(), 2);
    Get1IndType(type, 2);
    EXPECT_EQ(type, os("TEXT"));
    Get1IndType(type, 3);
    EXPECT_EQ(type, 0U);
    EXPECT_EQ(text(Get1IndResource(os("TEXT"), 2)), "hides");
    EXPECT_EQ(Get1IndResource(os("TEXT"), 0), nullptr);
    EXPECT_EQ(Get1IndResource(os("TEXT"), 3), nullptr);

    const Bytes ann{'A', 'n', 'n'}, none{}, other{'a', 'n', 'n'};
    GetResource(os("XXXX"), 1);
    EXPECT_EQ(GetNamedResource(os("TEXT"), other), nullptr);
    EXPECT_EQ(ResError(), -192) << "unchanged";
    EXPECT_EQ(text(GetNamedResource(os("TEXT"), ann)), "hides") << "found by name, then got by id from the front";
    EXPECT_EQ(GetNamedResource(os("TEXT"), none)->resID, 6);
    EXPECT_EQ(ResourceManager::shared().named(os("TEXT")).size(), 2U);
    EXPECT_EQ(ResourceManager::shared().size(os("DATA"), 1), 1);
    EXPECT_EQ(ResourceManager::shared().size(os("DATA"), 2), -1);
}

TEST_F(Resources, StringListsStopAtTheirEdges)
{
    open("a",
        {{"STR#", 1, std::string("\0\3\2ab\0\1c", 8)}, {"STR#", 2, std::string("\0\5\2ab\7x", 7)}, {"STR#", 3, "\1"},
            {"STR#", 4, std::string("\x80\0\1a", 4)}, {"STR ", 1, "\3abc"}, {"STR ", 2, ""}});
    const auto get = [](Int id, Int index) {
        Str255 s = pstr("before");
        GetIndString(s, id, index);
        EXPECT_FALSE(s.empty());
        return string(s);
    };
    EXPECT_EQ(get(1, 1), "ab");
    EXPECT_EQ(get(1, 2), "");
    EXPECT_EQ(get(1, 3), "c");
    EXPECT_EQ(get(1, 4), "");
    EXPECT_EQ(get(1, 0), "");
    EXPECT_EQ(get(2, 2), "x") << "cut at the end of the block";
    EXPECT_EQ(get(2, 3), "");
    EXPECT_EQ(get(2, 5), "");
    EXPECT_EQ(get(3, 1), "");
    EXPECT_EQ(get(4, 1), "") << "a count below 0";
    EXPECT_EQ(get(99, 1), "");
    EXPECT_EQ(string(GetString(1)), "abc");
    EXPECT_EQ(GetString(2), Str255{0});
    EXPECT_TRUE(GetString(3).empty());
}

TEST_F(Resources, DamagedFilesGiveWhatCanBeRead)
{
    const Bytes whole = fileOf({{"TEXT", 1, "hello", "n"}, {"TEXT", 2, "world"}, {"DATA", 1, "d"}});
    ASSERT_EQ(ResourceFile::parse(whole).size(), 3U);
    for (std::size_t cut = 0; cut < whole.size(); ++cut) {
        const Bytes shorter(whole.begin(), whole.begin() + std::ptrdiff_t(cut));
        EXPECT_LE(ResourceFile::parse(shorter).size(), 3U);
        for (const std::uint8_t wild : {0x00, 0x7F, 0x80, 0xFF}) {
            Bytes damaged = whole;
            damaged[cut] = wild;
            for (const auto& entry : ResourceFile::parse(damaged))
                EXPECT_LE(entry.data.size(), whole.size());
        }
    }
    EXPECT_EQ(ResourceManager::shared().open(write("short", Bytes(10, 1))), 2);
    EXPECT_EQ(GetResource(os("TEXT"), 1), nullptr);
    EXPECT_EQ(ResourceManager::shared().open(write("empty", {})), 3);
    HostDisk::Faults unreadable;
    unreadable.call = HostDisk::Call::Read;
    unreadable.after = 0;
    HostDisk::setFaults(unreadable);
    EXPECT_EQ(ResourceManager::shared().open(write("whole", whole)), -1);
    HostDisk::setFaults({});
    EXPECT_EQ(ResError(), -43);
    EXPECT_EQ(CurResFile(), 3);
}

TEST_F(Resources, ListsThatLieOverEachOtherDoNotGrow)
{
    // 30 types that all claim 65536 references from one list, each with the same large data.
    ByteWriter out;
    out.u32(16);
    out.u32(16 + 4 + 60000);
    out.zeros(8);
    out.u32(60000);
    out.zeros(60000);
    out.zeros(24);
    out.u16(28);
    out.u16(28);
    out.u16(29);
    for (int i = 0; i < 30; ++i) {
        out.u32(os("TEXT") + I(i));
        out.u16(0xFFFF);
        out.u16(2 + 30 * 8);
    }
    out.zeros(12 * 500);
    Int total = 0;
    for (const auto& entry : ResourceFile::parse(out.bytes))
        total += I(entry.data.size());
    EXPECT_GT(total, 0);
    EXPECT_LE(total, 4 * I(out.bytes.size()));
}
