#pragma once

// Sprites: a world composes them in an off-screen port and copies what has changed to the window. Its owner calls
// `SWAnimate` once a frame. Game thread only.

#include "Wainroad/Frame/Images.h"

#include <functional>
#include <list>
#include <memory>
#include <optional>

namespace MacToolbox {
struct GrafPort;
using GrafPtr = std::shared_ptr<GrafPort>;
} // namespace MacToolbox

namespace Wainroad {

struct Sprite;
struct SpriteWorld;
using SpriteRef = std::shared_ptr<Sprite>;

/// How a sprite looks in one frame.
struct SpriteState {
    bool visible = false;
    Point pos; ///< added to `src` it gives `dst`
    Rect dst, src;
    BitMap image, mask;
    Int mode = 0; ///< -1 masked; 0-7: bits 0-1 copy, or, xor, bic; bit 2 inverts the source
};

struct Sprite {
    Int id = 0;                            ///< free for the owner
    bool changed = false;                  ///< to be drawn in this frame
    SpriteState cur, old;                  ///< this frame and the one before
    Int moveCounter = 0, moveInterval = 0; ///< frames between automatic moves; interval 0 is none
    Int moveDH = 0, moveDV = 0;
    Int stepH = 0, stepV = 0, fixH = 0, fixV = 0; ///< scripted moves: step a frame and place, 16.16 fixed point
    Int frameCounter = 0, frameInterval = 0;      ///< frames between automatic changes of image; interval 0 is none
    Int firstFrame = 0, curFrame = 0, lastFrame = 1;
    BitMapsRef frames, masks;
    std::function<void(Sprite&)> moveProc;                        ///< before the automatic moves
    std::function<void(Sprite&)> postProc;                        ///< after drawing
    std::optional<Bytes> script;                                  ///< present: drives the sprite instead of the above
    Int scriptPC = 0;                                             ///< offset of the current record
    Int stepCount = 0, stepTotal = 0;                             ///< progress of a timed record
    std::function<bool(Int arg, Sprite&, bool isNew)> scriptProc; ///< opcode 254; true goes on, false ends the frame
    Int loopCount = 0;
    bool dead = false; ///< leaves the world at the end of this frame. Procs set it; they unlink nothing.
};

struct SpriteWorld {
    Rect bounds;  ///< window coordinates
    GrafPtr port; ///< off-screen, made by `SWOpenPort`
    Int depth = 0;
    bool useColor = false;
    Int scriptFlag = 0;                              ///< opcodes 10 and 11
    std::list<SpriteRef> sprites;                    ///< front to back
    std::function<void(const Rect&)> drawBackground; ///< into the world's port; white if none
    std::function<void(Int)> scriptProc;             ///< opcode 13

    SpriteRef first() const { return sprites.empty() ? nullptr : sprites.front(); }
    SpriteRef last() const { return sprites.empty() ? nullptr : sprites.back(); }
};

/// Makes the off-screen port for `bounds`. @return The depth, 1.
Int SWOpenPort(SpriteWorld& world);
/// Appends a sprite at the back; a new one if nil.
SpriteRef SWAddSprite(SpriteWorld& world, SpriteRef sprite = nullptr);
/// Puts a sprite before the one at `position` (0 is the front), or at the back if there are fewer; a new one if nil.
SpriteRef SWInsertSprite(SpriteWorld& world, SpriteRef sprite, Int position);
void SWRemoveSprite(SpriteWorld& world, const SpriteRef& sprite);
/// Takes out every sprite and clears its script.
void SWDispose(SpriteWorld& world);

/// One frame: with `move` every sprite moves, with `draw` each changed one is drawn (with a rectangle, all within it).
void SWAnimate(SpriteWorld& world, const Rect* rect, bool move, bool draw);
/// Composes `rect` anew and copies it to the current port. Sprites behind `sprite` are drawn as in the last frame, the
/// others as they are now; `sprite` itself only with `drawIt`. Nil stands for no sprite: only the background.
void SWDraw(SpriteWorld& world, const Sprite* sprite, Rect rect, bool drawIt);
/// Draws the current state of a sprite into the world's port, within `rect`.
void DrawSpriteNow(SpriteWorld& world, const Sprite& sprite, const Rect& rect);
/// One frame of the sprite's script. `Fatal` with "Scriptor" if it runs off its end, holds an unknown opcode, or runs
/// without ever ending the frame.
void SWRunScript(SpriteWorld& world, Sprite& sprite);

/// Starts a move spread over `steps` calls of `SpriteStep`; with 0 steps moves at once.
void SpriteMove(Sprite& sprite, Int steps, Int dh, Int dv);
void SpriteStep(Sprite& sprite);
/// Shows frame `n`, wrapped once into the range of frames. Nothing if it is shown already.
void SpriteSetFrame(Sprite& sprite, Int n);
/// `EraseRect` in white, without a clip, in the current port.
void FastEraseRect(const Rect& rect);

/// The usual setting up: appends a sprite that shows frames `firstFrame` to `lastFrame` of `frames`, starts on
/// `firstFrame`, with its place at (`v`, `h`), visible.
SpriteRef AddSprite(
    SpriteWorld& world, BitMapsRef frames, BitMapsRef masks, Int firstFrame, Int lastFrame, Int mode, Int h, Int v);

} // namespace Wainroad
