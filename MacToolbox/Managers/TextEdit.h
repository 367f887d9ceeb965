#pragma once

#include "MacToolbox/QuickDraw/QuickDraw.h"

#include <memory>
#include <optional>
#include <span>
#include <vector>

// Multi-line text in one font. The text is Mac OS Roman in a shared block; carriage return (13) breaks a line. Game
// thread only. A nil record does nothing; selections out of range are clamped.

namespace MacToolbox {

inline constexpr Int teJustLeft = 0, teFlushDefault = 0, teJustCenter = 1, teJustRight = -1;

struct TERec {
    /// Where a character stands: `h` of the pen, `top` of its line.
    struct Place {
        Int h, top;
        bool operator==(const Place&) const = default;
    };

    Rect destRect; ///< its width is the wrapping width; scrolling moves it
    Rect viewRect; ///< drawing is clipped to it
    Int lineHeight = 0, fontAscent = 0;
    Int selStart = 0, selEnd = 0; ///< equal is a caret
    bool active = false;
    Int just = teJustLeft;
    Int crOnly = 0; ///< negative: lines break at carriage returns only
    Int txFont = 0, txFace = 0, txMode = 1, txSize = 0;
    const GrafPtr inPort;
    Handle hText;                   ///< shared with whoever gave it
    std::optional<Int> lenOverride; ///< reported as the length if present
    std::vector<Int> lineStarts;    ///< offsets of line starts, then the text length
    bool autoView = false;          ///< scrolls the selection into view
    bool caretShown = false;
    Int caretTime = 0; ///< tick of the last caret change
    Int clickTime = 0; ///< tick of the last click
    Int clickLoc = 0;  ///< offset of the last click

    /// Takes the font from the port, measures it and breaks lines. Text is a new empty block.
    TERec(const Rect& dest, const Rect& view, const GrafPtr& port);

    Int teLength() const;
    /// Resizes the block: cut at the end, or zero bytes added.
    void setTeLength(Int n);
    Int nLines() const { return lineStarts.empty() ? 0 : I(lineStarts.size()) - 1; }
    Int lineStart(Int line) const { return lineStarts[static_cast<std::size_t>(line)]; }
    /// The line's characters without a trailing carriage return.
    std::span<const std::uint8_t> lineText(Int line) const;

    void measureFont();
    /// Breaks the text into lines.
    void calc();
    /// Width in pixels of the characters from `from` to `to`; 0 for an empty or impossible span.
    Int width(Int from, Int to) const;
    Int lineLeft(Int line) const;
    /// The line that holds the offset; the last one for the end of the text.
    Int lineOf(Int offset) const;
    Place pointOf(Int offset) const;
    /// The offset nearest to a local point.
    Int offsetAt(Point local) const;

    /// Draws the lines in view and the selection, without erasing.
    void draw();
    /// Inverts the selection, or shows the caret. Clips nothing.
    void hilite();
    void showCaret(bool on);
    /// With `autoView`, moves `destRect` so that the end of the selection is in view. Draws nothing.
    void scrollToSelection();
    /// Breaks lines, scrolls, erases the view and draws.
    void redraw();
    /// Puts `with` in place of the selection; both ends go behind it. Draws nothing.
    void replaceSelection(std::span<const std::uint8_t> with);

private:
    std::span<const std::uint8_t> text() const;
    Int measure(std::span<const std::uint8_t> chars) const;
};
using TEHandle = std::shared_ptr<TERec>;

/// The text scrap, a mirror of the host's pasteboard.
namespace TEScrap {
Bytes& bytes();
void toPasteboard();   ///< does not wait
void fromPasteboard(); ///< line feeds become carriage returns; unchanged if the pasteboard holds no text
}

inline void TEInit() { }
inline void TEDispose(const TEHandle&) { }
/// A new record on `thePort`, in its font.
TEHandle TENew(const Rect& destRect, const Rect& viewRect);
/// A copy of the first `length` bytes becomes the text, the caret behind it. Draws nothing.
void TESetText(std::span<const std::uint8_t> text, Int length, const TEHandle& te);
Handle TEGetText(const TEHandle& te);
void TECalText(const TEHandle& te);
void TESetJust(Int just, const TEHandle& te);
void TEAutoView(bool flag, const TEHandle& te);
void TEUpdate(const Rect& rect, const TEHandle& te); ///< draws all lines in view; `rect` is not looked at
void TESetSelect(Int start, Int end, const TEHandle& te);
void TEIdle(const TEHandle& te); ///< blinks the caret every 32 ticks
void TEActivate(const TEHandle& te);
void TEDeactivate(const TEHandle& te);
/// Selects with the mouse until the button goes up. @param local  In the coordinates of the record's port.
void TEClick(Point local, bool extend, const TEHandle& te);
void TEKey(Int key, const TEHandle& te);
void TECopy(const TEHandle& te);
void TECut(const TEHandle& te);
void TEPaste(const TEHandle& te);
/// Puts the first `length` bytes at the start of the selection, which loses nothing.
void TEInsert(std::span<const std::uint8_t> text, Int length, const TEHandle& te);
void TEDelete(const TEHandle& te);
void TEScroll(Int dh, Int dv, const TEHandle& te);
void TESelView(const TEHandle& te);
Int TEScrpLength();
Handle TEScrapHandle();
/// Erases the rectangle and draws wrapped text in it, on `thePort` in its font.
void TextBox(std::span<const std::uint8_t> text, Int count, const Rect& rect, Int just);

} // namespace MacToolbox
