// The words of every alert, and that they fit their box.

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Files.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Host/Misc.h"
#include "Tests/Walk/Stops.h"
#include "Wainroad/Errors/Errors.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Game/Wainroad.h"
#include "Wainroad/Screens/ModalDialogs.h"

#include <gtest/gtest.h>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

/// All static text of the dialog in front, one item after another.
std::string wordsInFront()
{
    std::string words;
    for (const DItem& item : Visit::dialog() ? Visit::dialog()->items : std::vector<DItem>{})
        if (item.kind() == statText)
            words += string(PStrOf(expandParams(item.handle.block->bytes))) + "\n";
    return words;
}

bool says(const std::string& part) { return wordsInFront().find(part) != std::string::npos; }

void expectWhole(const Visit& game, const std::string& what)
{
    for (const Surface& surface : surfacesOf(game))
        for (const std::string& fault : faultsOf(surface))
            ADD_FAILURE() << what << ": " << fault;
}

/// Does something that ends the game with an alert. @return What it printed.
std::string endOf(Visit& game, std::function<void()> last, const std::string& words)
{
    testing::internal::CaptureStderr();
    game.inGame(std::move(last));
    EXPECT_TRUE(says(words)) << wordsInFront();
    expectWhole(game, words);
    game.player.key("return");
    EXPECT_TRUE(game.run.runToEnd(120));
    EXPECT_EQ(game.run.status(), 0);
    return testing::internal::GetCapturedStderr();
}

} // namespace

TEST(Alerts, EveryDiskErrorHasItsSentence)
{
    Visit game(Visit::From::road);
    for (const OSErr error : {dskFulErr, nsvErr, ioErr, bdNamErr, eofErr, tmfoErr, fnfErr, wPrErr, fLckdErr, dupFNErr,
             opWrErr, permErr, dirNFErr}) {
        Str255 sentence{0};
        EXPECT_TRUE(ErrorMessage(error, sentence)) << error;
        game.inGame([error] { DiskError(error, false); });
        EXPECT_TRUE(says(string(sentence))) << error << ": " << wordsInFront();
        EXPECT_TRUE(says(string(ListString(1000, 15))));
        expectWhole(game, std::to_string(error));
        game.answerDialogs();
        EXPECT_TRUE(game.run.running());
    }
}

TEST(Alerts, AFatalOneSaysWhatFailedAndEndsTheGame)
{
    for (const auto& [error, headline] : {std::pair{resNotFound, 2}, std::pair{memFullErr, 3}}) {
        Visit game(Visit::From::start);
        const std::string printed = endOf(
            game, [error = error] { Fatal(error, "GetNewWindow"); }, string(ListString(1001, headline)));
        EXPECT_EQ(printed, "wainroad: error " + std::to_string(error) + " in GetNewWindow\n");
    }
    Visit game(Visit::From::start);
    EXPECT_EQ(endOf(
                  game, [] { DiskError(dskFulErr, true); }, string(ListString(1000, 14))),
        "wainroad: The disk is full.\n");
    Visit other(Visit::From::start);
    EXPECT_EQ(endOf(
                  other, [] { DiskError(-9999, false); }, "-9999"),
        "wainroad: error -9999 in DiskError\n");
}

TEST(Alerts, TheNotesOfTheFrameFit)
{
    constexpr Int kTexts = 3000, kPasswordTexts = 3003;
    Visit game(Visit::From::road);
    for (const auto& [list, index] :
        {std::pair{kTexts, Int{1}}, {kTexts, Int{11}}, {kTexts, Int{12}}, {kTexts, Int{13}}, {kTexts, Int{17}},
            {kPasswordTexts, Int{1}}, {kPasswordTexts, Int{2}}, {Int{1001}, Int{4}}, {Int{1001}, Int{5}}}) {
        const Str255 text = ListString(list, index);
        ASSERT_GT(text.size(), 1U) << list << ", " << index;
        game.inGame([&] { ShowNote(text); });
        EXPECT_TRUE(says(string(text)));
        expectWhole(game, string(text));
        game.answerDialogs();
    }
}

TEST(Alerts, AMachineThatIsTooOldIsRefusedInWords)
{
    const struct {
        OSType selector;
        Int answer, text; // of STR# 1001
    } kRefused[] = {{gestaltSystemVersion, 0x0601, 4}, {gestaltMachineType, 1, 5}};
    for (const auto& machine : kRefused) {
        testing::internal::CaptureStderr();
        GameRun run([&] {
            gestaltAnswers()[machine.selector] = machine.answer;
            Wainroad_main();
        });
        run.advance(30);
        const Str255 text = ListString(1001, machine.text);
        EXPECT_TRUE(says(string(text)));
        run.play("key return");
        EXPECT_TRUE(run.runToEnd(120));
        EXPECT_EQ(run.status(), 0);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "wainroad: " + string(text) + "\n");
    }
}
