#include "MacToolbox/Data/Files.h"

#include "MacToolbox/Base/HeadlessPlatform.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Data/HostDisk.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace MacToolbox;
namespace fs = std::filesystem;

namespace {

constexpr OSType kType = os("WRDC"), kCreator = os("WRGN");

Bytes bytesOf(const std::string& text) { return {text.begin(), text.end()}; }

class Files : public testing::Test {
protected:
    void SetUp() override
    {
        startRunAfresh();
        HostDisk::setFaults({});
        folder_ = testing::TempDir() + "files-" + std::to_string(::getpid()) + "/data";
        fs::remove_all(folder_);
        ::setenv("WR_DATA", folder_.c_str(), 1);
    }
    void TearDown() override
    {
        HostDisk::setFaults({});
        startRunAfresh();
        ::unsetenv("WR_DATA");
        fs::remove_all(fs::path(folder_).parent_path());
    }

    std::string path(const std::string& name) const { return folder_ + '/' + name; }

    std::string contents(const std::string& name) const
    {
        std::ifstream in(path(name), std::ios::binary);
        return in ? std::string{std::istreambuf_iterator<char>(in), {}} : "(missing)";
    }

    /// Everything in the folder that is not one of these names.
    std::string others(const std::set<std::string>& names) const
    {
        std::string found;
        if (fs::exists(folder_))
            for (const auto& entry : fs::directory_iterator(folder_))
                if (!names.count(entry.path().filename().string()))
                    found += entry.path().filename().string() + ' ';
        return found;
    }

    static OSErr write(Int ref, const std::string& text)
    {
        Int count = I(text.size());
        return FSWrite(ref, count, Ptr{PtrToHand(bytesOf(text)), 0});
    }

    static OSErr makeFile(const char* name, const std::string& text)
    {
        Int ref = 0;
        if (const OSErr err = HCreate(0, 0, pstr(name), kCreator, kType))
            return err;
        if (const OSErr err = FSOpen(pstr(name), 0, ref))
            return err;
        const OSErr err = write(ref, text);
        FSClose(ref);
        return err;
    }

    std::string folder_;
};

} // namespace

TEST_F(Files, CreateOpenDeleteAnswerTheirCodes)
{
    Int ref = 7;
    EXPECT_EQ(FSOpen(pstr("Save"), 0, ref), fnfErr);
    EXPECT_EQ(HDelete(-1, 2, pstr("Save")), fnfErr);
    EXPECT_EQ(ref, 7);
    ASSERT_EQ(makeFile("Save", "abc"), noErr);
    EXPECT_EQ(Create(pstr("Save"), -1, kCreator, kType), dupFNErr) << "every number means the data folder";
    EXPECT_EQ(contents("Save"), "abc");
    EXPECT_EQ(FSOpen(pstr("Save"), 0, ref), noErr);
    EXPECT_EQ(ref, 101) << "numbers go up from 100, closed or not";
    EXPECT_EQ(FSClose(ref), noErr);
    EXPECT_EQ(FSClose(ref), rfNumErr);
    EXPECT_EQ(FSDelete(pstr("Save"), 0), noErr);
    EXPECT_EQ(others({}), "");

    EXPECT_EQ(makeFile("Ann/Bob", "x"), noErr);
    EXPECT_EQ(contents("Ann:Bob"), "x");
    EXPECT_EQ(string(HostFiles::nameOf(path("Ann:Bob"))), "Ann/Bob");

    fs::create_directory(path("folder"));
    for (const char* name : {"folder", "", ".", ".."}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(HCreate(0, 0, pstr(name), 0, 0), dupFNErr);
        EXPECT_EQ(HOpen(0, 0, pstr(name), 0, ref), permErr);
        EXPECT_EQ(HDelete(0, 0, pstr(name)), ioErr);
    }
    const std::string tooLong(255, 'x'), twoBytes = [] {
        std::string s;
        for (int i = 0; i < 200; ++i)
            s += "é";
        return s;
    }();
    EXPECT_EQ(HCreate(0, 0, pstr(twoBytes), 0, 0), ioErr) << "400 bytes on the host";
    EXPECT_EQ(HOpen(0, 0, pstr(twoBytes), 0, ref), fnfErr);
    EXPECT_EQ(HCreate(0, 0, pstr(tooLong), 0, 0), noErr);
    EXPECT_EQ(HCreate(0, 0, Str255{3, 'a', 0, 'b'}, 0, 0), ioErr);
    EXPECT_EQ(contents("a"), "(missing)");
}

TEST_F(Files, TransfersMoveTheMark)
{
    ASSERT_EQ(makeFile("f", "0123456789"), noErr);
    ParamBlockRec pb;
    EXPECT_EQ(PBRead(pb), rfNumErr);
    pb.ioNamePtr = pstr("f");
    ASSERT_EQ(PBOpen(pb), noErr);
    const Handle block = NewHandle(8);
    pb.ioBuffer = Ptr{block, 4};
    pb.ioReqCount = 6;
    EXPECT_EQ(PBRead(pb), noErr);
    EXPECT_EQ(pb.ioActCount, 6) << "what was read counts, not what the block held";
    EXPECT_EQ(block->bytes,
        bytesOf(std::string("\0\0\0\0"
                            "0123",
            8)));
    pb.ioReqCount = 10;
    EXPECT_EQ(PBRead(pb), eofErr);
    EXPECT_EQ(pb.ioActCount, 4);
    EXPECT_EQ(PBRead(pb), eofErr);
    EXPECT_EQ(pb.ioActCount, 0);

    const struct {
        const char* what;
        Int mode, offset, count;
        const char* read;
        OSErr err;
    } kReads[] = {
        {"from start", fsFromStart, 8, 2, "89", noErr},
        {"back from the end", fsFromLEOF, -3, 2, "78", noErr},
        {"from the mark", fsFromMark, -1, 2, "89", noErr},
        {"at the end", fsFromLEOF, 0, 1, "", eofErr},
        {"below the start", fsFromStart, -5, 2, "01", noErr},
        {"far beyond", fsFromStart, 1'000'000, 1, "", eofErr},
        {"more than there is", fsFromStart, 9, 1'000'000'000'000, "9", eofErr},
        {"a count below 0", fsFromStart, 0, -4, "", noErr},
    };
    for (const auto& read : kReads) {
        SCOPED_TRACE(read.what);
        const Handle to = NewHandle(2);
        pb.ioBuffer = Ptr{to, 0};
        pb.ioPosMode = read.mode;
        pb.ioPosOffset = read.offset;
        pb.ioReqCount = read.count;
        EXPECT_EQ(PBRead(pb), read.err);
        EXPECT_EQ(pb.ioActCount, I(std::string(read.read).size()));
        EXPECT_EQ(std::string(to->bytes.begin(), to->bytes.begin() + std::ptrdiff_t(pb.ioActCount)), read.read);
    }

    pb.ioBuffer = Ptr{PtrToHand(bytesOf("XYZ")), 1};
    pb.ioPosMode = fsFromLEOF;
    pb.ioPosOffset = 0;
    pb.ioReqCount = 99;
    EXPECT_EQ(PBWrite(pb), noErr);
    EXPECT_EQ(pb.ioActCount, 2) << "as many as the block holds";
    pb.ioMisc = 4;
    EXPECT_EQ(PBSetEOF(pb), noErr);
    pb.ioPosMode = fsAtMark;
    EXPECT_EQ(PBWrite(pb), noErr) << "the mark stayed at 12";
    PBGetEOF(pb);
    EXPECT_EQ(pb.ioMisc, 14);
    pb.ioBuffer.reset();
    EXPECT_EQ(PBWrite(pb), ioErr);
    PBClose(pb);
    EXPECT_EQ(contents("f"), std::string("0123\0\0\0\0\0\0\0\0YZ", 14));

    if (::geteuid() != 0) { // root may write anything
        ::chmod(path("f").c_str(), 0444);
        Int ref = 0;
        ASSERT_EQ(FSOpen(pstr("f"), 0, ref), noErr);
        EXPECT_EQ(write(ref, "no"), ioErr);
        Int count = 2;
        EXPECT_EQ(FSRead(ref, count, Ptr{NewHandle(2), 0}), noErr);
    }
}

TEST_F(Files, TypesAreKeptWithAndWithoutAttributes)
{
    for (const bool attributes : {true, false}) {
        SCOPED_TRACE(attributes ? "attributes" : "companion files");
        HostDisk::Faults faults;
        faults.attributes = attributes;
        HostDisk::setFaults(faults);
        ASSERT_EQ(makeFile("Save", "x"), noErr);
        FInfo info;
        EXPECT_EQ(GetFInfo(pstr("Save"), 0, info), noErr);
        EXPECT_EQ(info.fdType, kType);
        EXPECT_EQ(info.fdCreator, kCreator);
        EXPECT_EQ(info.fdFlags, 0);
        info.fdFlags = 0x1234;
        info.fdType = kType + 1;
        EXPECT_EQ(SetFInfo(pstr("Save"), 0, info), noErr);
        EXPECT_EQ(HostFiles::finderInfo(path("Save")).fdFlags, 0x1234);
        EXPECT_EQ(HostFiles::finderInfo(path("Save")).fdType, kType + 1);
        const bool companion = fs::exists(path("._Save"));
        if (!attributes) {
            EXPECT_EQ(fs::file_size(path("._Save")), 32U);
        } else if (!companion) { // else this file system has no attributes at all
            char value[64];
            EXPECT_EQ(::getxattr(path("Save").c_str(), "user.com.apple.FinderInfo", value, sizeof value), 32);
        }
        EXPECT_EQ(HDelete(0, 0, pstr("Save")), noErr);
        EXPECT_EQ(others({}), "") << "the companion goes with its file";
    }
    const std::pair<const char*, OSType> plain[] = {
        {"LOG.TXT", os("TEXT")}, {"a.Txt", os("TEXT")}, {"other", 0}, {".txt", 0}, {"txt", 0}, {"a.txt.bak", 0}};
    for (const auto& [name, type] : plain) {
        std::ofstream(path(name)) << "text";
        EXPECT_EQ(HostFiles::finderInfo(path(name)).fdType, type) << name;
    }
    ParamBlockRec pb;
    pb.ioNamePtr = pstr("LOG.TXT");
    EXPECT_EQ(PBGetFInfo(pb), noErr);
    EXPECT_EQ(pb.ioFlLgLen, 4);
    EXPECT_GT(pb.ioFlMdDat, 2082844800);
}

TEST_F(Files, FoldersOfPanelsHaveTheirNumbers)
{
    const Int first = HostFiles::wd(folder_ + "/a"), second = HostFiles::wd(folder_ + "/b/");
    EXPECT_EQ(first, -200);
    EXPECT_EQ(second, -201);
    EXPECT_EQ(HostFiles::wd(folder_ + "/a/../b"), second);
    EXPECT_EQ(HCreate(first, 0, pstr("in a"), 0, 0), noErr) << "the folder is made";
    EXPECT_TRUE(fs::exists(path("a/in a")));
    HostFiles::queueScriptedFile("one");
    HostFiles::queueScriptedFile("//two/");
    EXPECT_EQ(HostFiles::scriptedAnswer(), folder_ + "/one");
    EXPECT_EQ(HostFiles::scriptedAnswer(), folder_ + "/two");
    EXPECT_EQ(HostFiles::scriptedAnswer(), std::nullopt);
    startRunAfresh();
    EXPECT_EQ(HostFiles::wd("/elsewhere"), -200);
}

namespace {

const std::string kOld(3000, 'o'), kNew = std::string(5000, 'n');

/// What a save does; its result is what the player would be told.
OSErr saveAgain()
{
    HostFiles::Replacement whole(0, 0, pstr("Save"));
    if (const OSErr err = HDelete(0, 0, pstr("Save")); err != noErr && err != fnfErr)
        return err;
    OSErr err = HCreate(0, 0, pstr("Save"), kCreator, kType);
    if (err)
        return err;
    Int ref = 0;
    if ((err = FSOpen(pstr("Save"), 0, ref)) != noErr)
        return err;
    err = SetEOF(ref, I(kNew.size()));
    Int half = 2500;
    const Handle block = PtrToHand(bytesOf(kNew));
    if (!err)
        err = FSWrite(ref, half, Ptr{block, 0});
    if (!err)
        err = FSWrite(ref, half, Ptr{block, 2500});
    FSClose(ref);
    if (err) {
        HDelete(0, 0, pstr("Save"));
        return err;
    }
    return whole.commit();
}

/// What a change of an existing file does.
OSErr changeInPlace()
{
    HostFiles::Replacement whole(0, 0, pstr("Save"));
    Int ref = 0;
    if (const OSErr err = FSOpen(pstr("Save"), 0, ref))
        return err;
    Int count = I(kOld.size());
    const OSErr err = FSWrite(ref, count, Ptr{PtrToHand(Bytes(kOld.size(), 'c')), 0});
    FSClose(ref);
    return err ? err : whole.commit();
}

} // namespace

TEST_F(Files, ReplacementLooksAsIfItWereDoneAtOnce)
{
    ASSERT_EQ(makeFile("Save", kOld), noErr);
    {
        HostFiles::Replacement whole(0, 0, pstr("Save"));
        Int ref = 0;
        EXPECT_EQ(HCreate(0, 0, pstr("Save"), kCreator, kType), dupFNErr);
        EXPECT_EQ(HDelete(0, 0, pstr("Save")), noErr);
        EXPECT_EQ(HDelete(0, 0, pstr("Save")), fnfErr);
        EXPECT_EQ(FSOpen(pstr("Save"), 0, ref), fnfErr);
        EXPECT_EQ(contents("Save"), kOld) << "it is still there";
        EXPECT_EQ(HCreate(0, 0, pstr("Save"), kCreator, kType + 1), noErr);
        FInfo info;
        EXPECT_EQ(GetFInfo(pstr("Save"), 0, info), noErr);
        EXPECT_EQ(info.fdType, kType + 1);
        ASSERT_EQ(FSOpen(pstr("Save"), 0, ref), noErr);
        EXPECT_EQ(write(ref, "new"), noErr);
        EXPECT_EQ(makeFile("Another", "at once"), noErr);
        EXPECT_EQ(contents("Another"), "at once");
        FSClose(ref);
        EXPECT_EQ(contents("Save"), kOld);
        EXPECT_EQ(whole.commit(), noErr);
    }
    EXPECT_EQ(contents("Save"), "new");
    EXPECT_EQ(HostFiles::finderInfo(path("Save")).fdType, kType + 1);
    EXPECT_EQ(others({"Save", "Another", "._Save", "._Another"}), "");

    { // given up
        HostFiles::Replacement whole(0, 0, pstr("Save"));
        HDelete(0, 0, pstr("Save"));
        HCreate(0, 0, pstr("Save"), 0, 0);
    }
    EXPECT_EQ(contents("Save"), "new");
    EXPECT_EQ(others({"Save", "Another", "._Save", "._Another"}), "");
}

TEST_F(Files, ChangeKeepsTypeModeAndLink)
{
    ASSERT_EQ(makeFile("Real", kOld), noErr);
    ::chmod(path("Real").c_str(), 0600);
    fs::create_symlink("Real", path("Save"));
    ASSERT_EQ(changeInPlace(), noErr);
    EXPECT_TRUE(fs::is_symlink(path("Save")));
    EXPECT_EQ(contents("Real"), std::string(kOld.size(), 'c'));
    EXPECT_EQ(HostFiles::finderInfo(path("Real")).fdType, kType);
    EXPECT_EQ(fs::status(path("Real")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(others({"Real", "Save", "._Real"}), "");
}

// Each host call fails once, or it and all later ones: the file is then the old one or the new one, whole and typed,
// and it is the new one exactly if the save was told to be good.
TEST_F(Files, AFailureAtAnyCallLosesNothing)
{
    for (const bool attributes : {true, false})
        for (const bool stays : {false, true})
            for (const bool change : {false, true})
                for (Int after = 0;; ++after) {
                    HostDisk::setFaults({});
                    fs::remove_all(folder_);
                    HostDisk::Faults faults;
                    faults.attributes = attributes;
                    HostDisk::setFaults(faults);
                    ASSERT_EQ(makeFile("Save", kOld), noErr);
                    faults.after = after;
                    faults.stays = stays;
                    HostDisk::setFaults(faults);
                    const OSErr err = change ? changeInPlace() : saveAgain();
                    const bool reached = HostDisk::callsMade() > after;
                    HostDisk::setFaults({});
                    SCOPED_TRACE(testing::Message() << "call " << after << " stays " << stays << " change " << change
                                                    << " attributes " << attributes);
                    const std::string now = contents("Save");
                    const std::string& fresh = change ? std::string(kOld.size(), 'c') : kNew;
                    EXPECT_TRUE(now == (err == noErr ? fresh : kOld)) << now.size();
                    EXPECT_EQ(HostFiles::finderInfo(path("Save")).fdType, kType);
                    EXPECT_EQ(saveAgain(), noErr);
                    EXPECT_EQ(others({"Save", "._Save"}), "")
                        << "what could not be removed is found by the next replacement";
                    if (!reached)
                        break;
                }
}

TEST_F(Files, AFullDiskKeepsTheOldSave)
{
    for (const Int room : {0, 1, 31, 32, 2500, 4999}) {
        ASSERT_EQ(fs::exists(path("Save")) ? noErr : makeFile("Save", kOld), noErr);
        HostDisk::Faults faults;
        faults.room = room;
        HostDisk::setFaults(faults);
        EXPECT_EQ(saveAgain(), ioErr) << room;
        HostDisk::setFaults({});
        EXPECT_EQ(contents("Save"), kOld) << room;
        EXPECT_EQ(others({"Save", "._Save"}), "") << room;
    }
    HostDisk::Faults faults;
    faults.room = 0;
    HostDisk::setFaults(faults);
    EXPECT_EQ(changeInPlace(), noErr) << "no room for a copy, but the file itself does not grow";
}

// The process ends before each call that changes something, in a save that goes well and in one that finds the disk
// full and clears up: the next start finds one whole save and nothing else.
TEST_F(Files, AKillAtAnyCallLeavesAWholeFile)
{
    const auto killed = [&](bool attributes, bool change, Int room, Int end) {
        HostDisk::Faults faults;
        faults.attributes = attributes;
        HostDisk::setFaults(faults);
        fs::remove_all(folder_);
        startRunAfresh();
        EXPECT_EQ(makeFile("Save", kOld), noErr);
        const pid_t child = ::fork();
        if (child == 0) {
            faults.room = room;
            faults.endBefore = end;
            HostDisk::setFaults(faults);
            ::_exit((change ? changeInPlace() : saveAgain()) == noErr ? 0 : 1);
        }
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        startRunAfresh();
        HostFiles::makeDataFolder();
        return WEXITSTATUS(status);
    };
    for (const bool attributes : {true, false})
        for (const bool change : {false, true})
            for (const Int room : {-1, 2500})
                for (Int end = 0, exit = 9; exit == 9; ++end) {
                    exit = killed(attributes, change, room, end);
                    SCOPED_TRACE(testing::Message() << "before change " << end << ", in place " << change
                                                    << ", attributes " << attributes << ", room " << room);
                    const std::string now = contents("Save"), fresh = change ? std::string(kOld.size(), 'c') : kNew;
                    EXPECT_TRUE(now == fresh || (now == kOld && exit != 0)) << now.size();
                    EXPECT_EQ(HostFiles::finderInfo(path("Save")).fdType, kType);
                    EXPECT_EQ(others({"Save", "._Save"}), "");
                }
}

TEST_F(Files, ANewFileThatFailsIsNotThere)
{
    for (Int after = 0; after < 4; ++after) {
        HostDisk::Faults faults;
        faults.call = HostDisk::Call::Write;
        faults.after = after;
        HostDisk::setFaults(faults);
        const OSErr err = saveAgain();
        HostDisk::setFaults({});
        EXPECT_EQ(contents("Save"), err ? "(missing)" : kNew);
        fs::remove_all(folder_);
    }
}
