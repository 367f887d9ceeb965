#include "MacToolbox/Managers/TextEdit.h"

#include "MacToolbox/Managers/Events.h"
#include "MacToolbox/QuickDraw/Screen.h"
#include "Tests/Managers/ToolboxFixture.h"

using namespace MacToolbox;

namespace {

/// Records lie at global (50, 50), the window's corner at (40, 40).
class TextEditTest : public ToolboxTest {
protected:
    TextEditTest() : w(window({40, 40, 240, 440})) { SetPort(w); }

    /// A record `columns` characters wide and `lines` high, with a text.
    static TEHandle record(std::string_view text, Int columns, Int lines = 8)
    {
        const Rect r{10, 10, 10 + lines * kLine, 10 + columns * kChar};
        const TEHandle te = TENew(r, r);
        TESetText(bytesOf(text), I(text.size()), te);
        return te;
    }
    static std::string text(const TEHandle& te)
    {
        return std::string(te->hText->bytes.begin(), te->hText->bytes.end());
    }
    static std::vector<std::string> lines(const TEHandle& te)
    {
        std::vector<std::string> out;
        for (Int i = 0; i < te->nLines(); ++i) {
            const auto chars = te->lineText(i);
            out.emplace_back(chars.begin(), chars.end());
        }
        return out;
    }
    static std::pair<Int, Int> selection(const TEHandle& te) { return {te->selStart, te->selEnd}; }
    /// Where a character cell of a record begins, global.
    static Point cell(Int line, Int column) { return {50 + line * kLine + 3, 50 + column * kChar + 1}; }
    static void typeKeys(const TEHandle& te, std::string_view keys)
    {
        for (const char c : keys)
            TEKey(static_cast<std::uint8_t>(c), te);
    }

    WindowPtr w;
};

using Strings = std::vector<std::string>;

} // namespace

TEST_F(TextEditTest, LinesBreakBehindTheLastSpaceThatFits)
{
    const struct {
        const char* text;
        Int columns;
        Strings lines;
    } cases[] = {
        {"", 10, {""}},
        {"one two", 10, {"one two"}},
        {"one two six", 7, {"one ", "two six"}}, // the space that overflows carries the whole word down
        {"one two six", 8, {"one two ", "six"}},
        {"wagonmaster", 5, {"wagon", "maste", "r"}},
        {"a wagonmaster", 5, {"a ", "wagon", "maste", "r"}},
        {"ab", 0, {"a", "b"}}, // a line holds one character at least
        {"a\rb", 5, {"a", "b"}},
        {"a\r", 5, {"a"}},
        {"\r\r", 5, {"", ""}},
        {"12345\r6", 5, {"12345", "6"}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(lines(record(c.text, c.columns)), c.lines) << c.text << " in " << c.columns;
    const TEHandle te = record("one two\rsix", 3);
    te->crOnly = -1;
    TECalText(te);
    EXPECT_EQ(lines(te), (Strings{"one two", "six"}));
    EXPECT_EQ(record("", 10)->lineStarts, (std::vector<Int>{0, 0}));
}

TEST_F(TextEditTest, PointsAndOffsetsAgree)
{
    const TEHandle te = record("one two six", 8);
    const struct {
        Int v, h, offset;
    } points[] = {{0, 0, 0}, {10, 10 + 2, 0}, {10, 10 + 3, 1}, {13, 400, 8}, {10 + kLine, 0, 8},
        {10 + kLine, 10 + 14, 10}, {999, 10 + 14, 10}, {-999, 10 + 14, 2}};
    for (const auto& p : points)
        EXPECT_EQ(te->offsetAt({p.v, p.h}), p.offset) << p.v << ',' << p.h;
    EXPECT_EQ(te->pointOf(3), (TERec::Place{10 + 3 * kChar, 10}));
    EXPECT_EQ(te->pointOf(8), (TERec::Place{10, 10 + kLine})) << "a line's end is the next one's start";
    EXPECT_EQ(te->pointOf(11), (TERec::Place{10 + 3 * kChar, 10 + kLine}));
    te->just = teJustRight;
    EXPECT_EQ(te->lineLeft(1), 10 + 5 * kChar);
    te->just = teJustCenter;
    EXPECT_EQ(te->lineLeft(1), (10 + 10 + 8 * kChar - 3 * kChar) / 2);
}

TEST_F(TextEditTest, KeysEditAndMove)
{
    const TEHandle te = record("", 10);
    typeKeys(te, "wagon");
    EXPECT_EQ(text(te), "wagon");
    typeKeys(te, "\x1C\x1C\x08");
    EXPECT_EQ(text(te), "waon");
    EXPECT_EQ(selection(te), std::pair(Int{2}, Int{2}));
    TESetSelect(32767, 1, te);
    EXPECT_EQ(selection(te), std::pair(Int{1}, Int{4})) << "sorted and cut to the text";
    typeKeys(te, "\x1D");
    EXPECT_EQ(selection(te), std::pair(Int{4}, Int{4})) << "right leaves a range at its end";
    typeKeys(te, "\x1D");
    EXPECT_EQ(te->selEnd, 4);
    TESetSelect(1, 3, te);
    typeKeys(te, "\x1C");
    EXPECT_EQ(te->selEnd, 1) << "left at its start";
    typeKeys(te, "\r\x05");
    EXPECT_EQ(text(te),
        "w\r\x05"
        "aon");

    const Int generation = Screen::shared().generation;
    TESetSelect(0, 0, te);
    te->caretShown = true;
    typeKeys(te, "\x08");
    EXPECT_EQ(Screen::shared().generation, generation) << "backspace at the start does nothing at all";
    EXPECT_TRUE(te->caretShown);
}

TEST_F(TextEditTest, UpAndDownKeepTheColumnAndStopAtTheEnds)
{
    const TEHandle te = record("aaaa\rbb\rcccc", 10);
    TESetSelect(3, 3, te);
    const Int offsets[] = {7, 10, 10}; // the short line's end; its column on the last line; the last line stays
    for (const Int offset : offsets) {
        TEKey(31, te);
        EXPECT_EQ(te->selStart, offset);
    }
    for (const Int offset : {7, 2, 2}) {
        TEKey(30, te);
        EXPECT_EQ(te->selStart, offset);
    }
}

TEST_F(TextEditTest, TheSelectionIsInvertedOnceAndTakenOffAgain)
{
    const TEHandle te = record("one two six", 8);
    TEUpdate({}, te);
    const Bytes plain = screen();
    TESetSelect(1, 3, te);
    EXPECT_EQ(screen(), plain) << "an inactive record shows no selection";
    TEActivate(te);
    TEActivate(te);
    const Bytes selected = screen();
    EXPECT_NE(selected, plain);
    TESetSelect(2, 10, te);
    const Int right = 50 + 8 * kChar;
    EXPECT_TRUE(black(right - 1, 50 + kLine - 1)) << "out to the view's edge on all but the last line";
    EXPECT_TRUE(black(50 + 2 * kChar - 1, 50 + 2 * kLine - 1));
    EXPECT_FALSE(black(50 + 2 * kChar, 50 + 2 * kLine - 1)) << "exact on the last";
    TESetSelect(1, 3, te);
    EXPECT_EQ(screen(), selected);
    TEDeactivate(te);
    EXPECT_EQ(screen(), plain);
}

TEST_F(TextEditTest, TheCaretBlinksAndLeavesNoTrace)
{
    const TEHandle te = record("one", 8);
    te->draw();
    const Bytes plain = screen();
    TEActivate(te);
    EXPECT_TRUE(te->caretShown);
    EXPECT_EQ(blackIn({50, 50 + 3 * kChar - 1, 50 + kLine, 50 + 3 * kChar}), kLine);
    TEIdle(te);
    EXPECT_TRUE(te->caretShown) << "not before 32 ticks";
    clock.sleep(33 * kTickNanos);
    TEIdle(te);
    EXPECT_FALSE(te->caretShown);
    EXPECT_EQ(screen(), plain);
    TESetSelect(3, 3, te);
    TEKey('!', te);
    EXPECT_EQ(blackIn({50, 50 + 4 * kChar - 1, 50 + kLine, 50 + 4 * kChar}), kLine) << "behind what is typed";
    TEKey(8, te);
    TESetSelect(0, 0, te);
    EXPECT_TRUE(te->caretShown);
    EXPECT_EQ(screen(), plain) << "at the view's left edge it has no pixel";
    TEDeactivate(te);
    EXPECT_FALSE(te->caretShown);
}

TEST_F(TextEditTest, DrawingStaysInTheView)
{
    const TEHandle te = record(std::string(200, 'x'), 10, 3);
    TEUpdate({0, 0, 1, 1}, te);
    EXPECT_GT(blackIn({50, 50, 50 + 3 * kLine, 50 + 10 * kChar}), 500);
    EXPECT_EQ(blackIn({50 + 3 * kLine, 41, 239, 439}), 0);
    EXPECT_EQ(w->port->clipRgn->region, Region(kHugeRect));
    TEScroll(0, -15 * kLine, te);
    EXPECT_GT(blackIn({50, 50, 50 + 3 * kLine, 50 + 10 * kChar}), 500) << "lines 15 to 17";
    EXPECT_EQ(blackIn({41, 41, 50, 439}), 0);
    TEScroll(0, -5 * kLine, te);
    EXPECT_EQ(blackIn({50, 50, 50 + 3 * kLine, 50 + 10 * kChar}), 0) << "there is no line 20";
}

TEST_F(TextEditTest, AutoViewFollowsTheCaret)
{
    const TEHandle te = record("", 10, 2);
    te->crOnly = -1;
    TEAutoView(true, te);
    typeKeys(te, "0123456789ab");
    EXPECT_EQ(te->destRect.left, 10 - 2 * kChar - 1);
    typeKeys(te, "\r\r\r");
    EXPECT_EQ(te->destRect.top, 10 - 1 * kLine) << "a last return begins no line";
    TESetSelect(0, 0, te);
    EXPECT_EQ(te->destRect.topLeft(), (Point{10, 10}));
}

TEST_F(TextEditTest, ScrapGoesThroughThePasteboard)
{
    const TEHandle te = record("caf\x8E one", 10);
    TESetSelect(0, 4, te);
    TECut(te);
    EXPECT_EQ(text(te), " one");
    platform.drain();
    EXPECT_EQ(platform.pasteboard(), "café");
    platform.setPasteboard("ä\nb→");
    EXPECT_EQ(TEScrpLength(), 4);
    EXPECT_EQ(TEScrapHandle()->bytes, bytesOf("?\rb?")) << "one that cannot be told makes all of them question marks";
    platform.setPasteboard("ä\n");
    TEPaste(te);
    EXPECT_EQ(text(te), "\x8A\r one");
    TESetSelect(1, 3, te);
    TEInsert(bytesOf("xyz"), 2, te);
    EXPECT_EQ(text(te), "\x8Axy\r one") << "what was selected stays";
    EXPECT_EQ(selection(te), std::pair(Int{3}, Int{3}));
    TESetSelect(0, 3, te);
    TEDelete(te);
    EXPECT_EQ(text(te), "\r one");
}

TEST_F(TextEditTest, TheMouseSelects)
{
    const TEHandle te = record("one two, six", 20);
    clock.sleep(100 * kTickNanos); // no double click with the start of the run
    const Point press = cell(0, 1);
    Input::mouse(press.h, press.v, true);
    mouseLater(2, cell(0, 6), true);
    mouseLater(4, cell(0, 6), false);
    TEClick({press.v - 40, press.h - 40}, false, te);
    EXPECT_EQ(selection(te), std::pair(Int{1}, Int{6}));

    clickLater(2, cell(0, 9));
    TEClick({cell(0, 9).v - 40, cell(0, 9).h - 40}, true, te);
    EXPECT_EQ(selection(te), std::pair(Int{1}, Int{9})) << "extended from the start";

    clock.sleep(100 * kTickNanos);
    for (int i = 0; i < 2; ++i) {
        clickLater(2, cell(0, 5));
        TEClick({cell(0, 5).v - 40, cell(0, 5).h - 40}, false, te);
    }
    EXPECT_EQ(selection(te), std::pair(Int{4}, Int{7})) << "the word without its comma";
}

TEST_F(TextEditTest, ARecordWithoutTextOrWithANewerOneIsSafe)
{
    const TEHandle te = record("one two six seven", 5);
    te->hText = std::make_shared<Block>(bytesOf("ab")); // lines are older than the text
    te->draw();
    EXPECT_EQ(te->offsetAt({10 + kLine, 300}), 2);
    te->pointOf(90);
    te->selStart = 50, te->selEnd = 70;
    typeKeys(te, "c");
    EXPECT_EQ(text(te), "abc");
    te->setTeLength(2);
    EXPECT_EQ(text(te), "ab");
    te->lenOverride = 99;
    TECalText(te);
    EXPECT_EQ(lines(te), Strings{"ab"});
    te->hText = nullptr;
    typeKeys(te, "x\x08\x1E\x1F\x1C\x1D");
    TECut(te);
    EXPECT_EQ(te->nLines(), 1);
    TEKey('x', nullptr);
    TESetSelect(0, 1, nullptr);
}

TEST_F(TextEditTest, TextBoxErasesAndJustifies)
{
    FillRect({0, 0, 100, 200}, qd.black);
    TextBox(bytesOf("abcd"), 2, {10, 10, 10 + kLine, 10 + 10 * kChar}, teJustRight);
    EXPECT_EQ(blackIn({50, 50, 50 + kLine, 50 + 8 * kChar}), 0);
    EXPECT_TRUE(black(50 + 8 * kChar, 50));
    EXPECT_TRUE(black(49, 50) && black(50 + 10 * kChar, 50));
}
