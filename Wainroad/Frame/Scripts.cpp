#include "Wainroad/Frame/Sprites.h"

#include "Wainroad/Errors/Errors.h"

namespace Wainroad {

enum Opcode : Int {
    kOpNothing,
    kOpWait,
    kOpMove,
    kOpMoveTo,
    kOpFrame,
    kOpNextFrame,
    kOpPreviousFrame,
    kOpLoop,
    kOpHide,
    kOpShow,
    kOpSetFlag,
    kOpAwaitFlag,
    kOpMode,
    kOpCall,
    kOpSpecial = 254,
    kOpEnd = 255
};
static constexpr Int kBadScript = -5000;
static constexpr Int kMostRecords = 100'000; // in one frame; beyond that a script goes round for ever

/// What becomes of a record.
enum class Then { next, jump, stop };

/// One frame of one script.
class Runner {
public:
    Runner(SpriteWorld& world, Sprite& sprite)
        : world_(world), sprite_(sprite), isNew_(sprite.stepCount == sprite.stepTotal)
    {
    }

    void run()
    {
        if (!isNew_)
            ++sprite_.stepCount;
        for (Int records = 0; records < kMostRecords; ++records) {
            checkPlace();
            const Then then = runRecord();
            if (then == Then::stop) {
                if (sprite_.stepTotal == sprite_.stepCount)
                    sprite_.scriptPC += byteAt(0);
                return;
            }
            if (then == Then::next) {
                sprite_.scriptPC += byteAt(0);
                isNew_ = true;
            }
        }
        Fatal(kBadScript, "Scriptor");
    }

private:
    Int size() const { return sprite_.script ? I(sprite_.script->size()) : 0; }

    void checkPlace() const
    {
        if (sprite_.scriptPC < 0 || sprite_.scriptPC >= size())
            Fatal(kBadScript, "Scriptor");
    }

    /// A byte of the record; 0 past the end.
    Int byteAt(Int offset) const
    {
        const Int at = sprite_.scriptPC + offset;
        return at >= 0 && at < size() ? (*sprite_.script)[static_cast<std::size_t>(at)] : 0;
    }
    Int arg(Int n) const
    {
        const Int at = 2 + 2 * n;
        if (sprite_.scriptPC + at + 1 >= size())
            return 0;
        return static_cast<std::int16_t>(byteAt(at) << 8 | byteAt(at + 1));
    }

    Then runRecord()
    {
        if (sprite_.scriptPC + 1 >= size()) {
            sprite_.dead = true;
            return Then::stop;
        }
        switch (byteAt(1)) {
        case kOpNothing: return Then::next;
        case kOpWait: return wait();
        case kOpMove: return move(arg(1), arg(2));
        case kOpMoveTo: return move(arg(1) - sprite_.cur.pos.h, arg(2) - sprite_.cur.pos.v);
        case kOpFrame: SpriteSetFrame(sprite_, arg(0)); return Then::next;
        case kOpNextFrame: SpriteSetFrame(sprite_, sprite_.curFrame + 1); return Then::next;
        case kOpPreviousFrame: SpriteSetFrame(sprite_, sprite_.curFrame - 1); return Then::next;
        case kOpLoop: return loop();
        case kOpHide: return show(false);
        case kOpShow: return show(true);
        case kOpSetFlag: world_.scriptFlag = arg(0); return Then::next;
        case kOpAwaitFlag: return awaitFlag();
        case kOpMode:
            sprite_.cur.mode = arg(0);
            sprite_.changed = true;
            return Then::next;
        case kOpCall:
            if (world_.scriptProc)
                world_.scriptProc(arg(0));
            return Then::next;
        case kOpSpecial:
            return !sprite_.scriptProc || sprite_.scriptProc(arg(0), sprite_, isNew_) ? Then::next : Then::stop;
        case kOpEnd: sprite_.dead = true; return Then::stop;
        }
        Fatal(kBadScript, "Scriptor");
    }

    Then wait()
    {
        if (!isNew_)
            return Then::stop;
        sprite_.stepTotal = arg(0);
        sprite_.stepCount = arg(0) != 0;
        return arg(0) != 0 ? Then::stop : Then::next;
    }

    Then move(Int dh, Int dv)
    {
        if (isNew_) {
            const Int steps = arg(0);
            sprite_.stepTotal = steps;
            sprite_.stepCount = steps != 0;
            SpriteMove(sprite_, steps, dh, dv);
            if (steps == 0)
                return Then::next;
        }
        SpriteStep(sprite_);
        return Then::stop;
    }

    Then loop()
    {
        if (sprite_.loopCount == 0)
            sprite_.loopCount = arg(0);
        else if (--sprite_.loopCount == 0)
            return Then::next;
        sprite_.scriptPC = arg(2);
        return Then::jump;
    }

    Then show(bool visible)
    {
        sprite_.cur.visible = visible;
        sprite_.changed = true;
        return Then::next;
    }

    Then awaitFlag()
    {
        if (isNew_)
            sprite_.stepCount = sprite_.stepTotal = 1;
        if (world_.scriptFlag == arg(0))
            return Then::next;
        sprite_.stepCount = 0;
        return Then::stop;
    }

    SpriteWorld& world_;
    Sprite& sprite_;
    bool isNew_;
};

void SWRunScript(SpriteWorld& world, Sprite& sprite)
{
    sprite.old = sprite.cur;
    Runner(world, sprite).run();
}

} // namespace Wainroad
