#include "MacToolbox/Managers/StandardFile.h"

#include "MacToolbox/Base/HeadlessPlatform.h"
#include "MacToolbox/Base/RunState.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <unistd.h>

using namespace MacToolbox;

namespace {

/// A platform whose panels answer by themselves and keep what they were asked.
class PanelPlatform final : public HeadlessPlatform {
public:
    bool hasPanels() const override { return true; }
    void showPanel(const PanelRequest& request, std::function<void(std::optional<std::string>)> done) override
    {
        saving = request.saving, prompt = request.prompt, name = request.name;
        accepted.clear();
        for (const std::string& path : offered)
            accepted += request.accepts && request.accepts(path) ? '+' : '-';
        done(answer);
    }

    std::optional<std::string> answer;
    std::vector<std::string> offered;
    bool saving = false;
    std::string prompt, name, accepted;
};

class StandardFile : public testing::Test {
protected:
    void SetUp() override
    {
        startRunAfresh();
        folder_ = testing::TempDir() + "panels-" + std::to_string(::getpid());
        ::setenv("WR_DATA", folder_.c_str(), 1);
        std::filesystem::create_directories(folder_);
    }
    void TearDown() override
    {
        Platform::install(nullptr);
        ::unsetenv("WR_DATA");
        std::filesystem::remove_all(folder_);
        startRunAfresh();
    }

    std::string file(const std::string& name, OSType type)
    {
        const std::string path = folder_ + '/' + name;
        std::ofstream(path) << name;
        FInfo info;
        info.fdType = type;
        HostFiles::setFinderInfo(path, info);
        return path;
    }

    static SFReply get(const FileFilterProc& filter = nullptr, Int count = 0, const std::vector<OSType>& types = {})
    {
        SFReply reply{true, true, 1, 2, 3, pstr("before")};
        SFGetFile({}, pstr("?"), filter, count, types, nullptr, reply);
        return reply;
    }
    static SFReply put(const char* name, OSType kind = 0)
    {
        SFReply reply{true, true, 1, 2, 3, pstr("before")};
        SFPutFile({}, pstr("Save as:"), pstr(name), nullptr, reply, kind);
        return reply;
    }

    std::string folder_;
};

constexpr OSType kSave = os("WRDC"), kOther = os("TEXT");

} // namespace

TEST_F(StandardFile, ScriptedAnswersServeEachQuestionInTurn)
{
    HeadlessPlatform platform;
    Platform::install(&platform);
    file("a:b", kSave);
    for (const char* name : {"first", "a:b", "a:b", "a:b", "sub/deep"})
        HostFiles::queueScriptedFile(name);
    EXPECT_EQ(string(put("x").fName), "first");
    SFReply reply = get(nullptr, 1, {kOther});
    EXPECT_TRUE(reply.good) << "a scripted answer passes whatever its type";
    EXPECT_EQ(reply.fType, kSave);
    EXPECT_EQ(string(reply.fName), "a/b");
    EXPECT_EQ(HostFiles::url(reply.vRefNum, 0, reply.fName), folder_ + "/a:b");
    EXPECT_TRUE(get([](OSType type, const Str255&) { return type != kSave; }).good);
    reply = get([](OSType type, const Str255&) { return type == kSave; });
    EXPECT_FALSE(reply.good);
    EXPECT_EQ(reply.fName, Str255{0});
    reply = put("x");
    EXPECT_EQ(string(reply.fName), "deep");
    EXPECT_EQ(HostFiles::url(reply.vRefNum, 0, reply.fName), folder_ + "/sub/deep");
    EXPECT_FALSE(get().good) << "an empty queue is a cancelled panel";

    const std::string longName(70, 'n');
    HostFiles::queueScriptedFile(longName);
    HostFiles::queueScriptedFile(longName);
    EXPECT_EQ(put("x").fName[0], 63);
    reply = get();
    EXPECT_TRUE(reply.good) << "it need not exist";
    EXPECT_EQ(reply.fName[0], 70);
    EXPECT_EQ(reply.fType, 0U);
}

TEST_F(StandardFile, PanelsShowWhatTheGameAcceptsAndAnswerIt)
{
    PanelPlatform platform;
    Platform::install(&platform);
    platform.offered = {file("save", kSave), file("text", kOther), file("none", 0)};
    platform.answer = platform.offered[0];
    EXPECT_EQ(get(nullptr, 1, {kSave, kOther}).fType, kSave);
    EXPECT_EQ(platform.accepted, "+--") << "only the first type counts";
    get(nullptr, 0, {kSave});
    EXPECT_EQ(platform.accepted, "+++");
    get([](OSType, const Str255& name) { return string(name) == "text"; });
    EXPECT_EQ(platform.accepted, "+-+");
    platform.answer.reset();
    EXPECT_FALSE(put("proposed é").good);
    EXPECT_TRUE(platform.saving);
    EXPECT_EQ(platform.prompt, "Save as:");
    EXPECT_EQ(platform.name, "proposed é");
    put("x", kOther);
    EXPECT_EQ(platform.accepted, "-+-") << "what may be replaced";
}
