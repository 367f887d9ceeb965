#include "Tools/rsrc/Check.h"
#include "Tools/rsrc/Forms.h"

namespace Rsrc {

namespace {

constexpr Int kScripts = 13, kFirstMasked = 7, kMasked = -1, kImageFrames = 18;
constexpr Int kMostRecords = 10000; // in one frame, else a loop that never waits
constexpr Int kMostFrames = 20000;  // of a scene, else it never ends
constexpr Int kLeastFrames = 34;    // 100 ticks at 3 ticks a frame

/// One sprite that follows a script, as far as its end and its frames go.
struct Runner {
    Int script = 0;
    Block code;
    Int pc = 0, stepCount = 0, stepTotal = 0, loopCount = 0, endedAt = -1;
    Int mode = 0, image = 0;
    bool visible = true;
    std::string fault;

    Int argument(Int n) const { return pc + 2 + 2 * n + 2 <= code.count() ? code.s16(pc + 2 + 2 * n) : 0; }
    bool done() const { return endedAt >= 0 || !fault.empty(); }

    /// One frame of the scene.
    void run(Int frame, Int& flag)
    {
        bool isNew = stepCount == stepTotal;
        if (!isNew)
            ++stepCount;
        for (Int records = 0;; ++records) {
            if (pc + 2 > code.count() || pc < 0 || code.u8(pc) < 2) {
                fault = "leaves its bytes at " + std::to_string(pc);
                return;
            }
            if (records > kMostRecords) {
                fault = "loops without a wait";
                return;
            }
            if (record(frame, flag, isNew))
                break;
            isNew = true;
        }
        const bool hasMask = image == 7 || image == 9 || image == 12;
        if (!done() && visible && mode == kMasked && !hasMask)
            fault = "shows frame " + std::to_string(image) + " masked, which has no mask";
        if (!done() && stepTotal == stepCount)
            pc += code.u8(pc);
    }

private:
    /// Runs one record. @return True if it ends the frame.
    bool record(Int frame, Int& flag, bool isNew)
    {
        const Int op = code.u8(pc + 1);
        const auto next = [&] {
            pc += code.u8(pc);
            return false;
        };
        switch (op) {
        case 1:
        case 2:
        case 3:
            if (!isNew)
                return true;
            stepTotal = argument(0);
            stepCount = stepTotal != 0 ? 1 : 0;
            return stepTotal != 0 ? true : next();
        case 4:
            image = argument(0);
            if (image < 0 || image >= kImageFrames)
                fault = "shows frame " + std::to_string(image) + ", which there is none of";
            return fault.empty() ? next() : true;
        case 5: image = (image + 1) % kImageFrames; return next();
        case 6: image = (image + kImageFrames - 1) % kImageFrames; return next();
        case 7:
            if (loopCount != 0 && --loopCount == 0)
                return next();
            if (loopCount == 0)
                loopCount = argument(0);
            pc = argument(2);
            return false;
        case 8:
        case 9: visible = op == 9; return next();
        case 12: mode = argument(0); return next();
        case 10: flag = argument(0); return next();
        case 11:
            if (isNew)
                stepCount = stepTotal = 1;
            if (flag == argument(0))
                return next();
            stepCount = 0;
            return true;
        case 255: endedAt = frame; return true;
        default:
            if (op > 13 && op != 254) {
                fault = "has the unknown opcode " + std::to_string(op);
                return true;
            }
            return next();
        }
    }
};

/// Runs the scripts of a scene together, front to back.
void checkScene(
    const std::string& name, const std::vector<Int>& order, const std::vector<Bytes>& scripts, Findings& findings)
{
    std::vector<Runner> runners;
    for (const Int n : order) {
        runners.emplace_back();
        runners.back().script = n;
        runners.back().mode = n >= kFirstMasked ? kMasked : 0;
        runners.back().code = Block(scripts[static_cast<std::size_t>(n)]);
    }
    Int flag = 0, frame = 0;
    bool alive = true;
    for (; alive && frame < kMostFrames; ++frame) {
        alive = false;
        for (Runner& runner : runners) {
            if (!runner.done())
                runner.run(frame, flag);
            alive |= !runner.done();
        }
    }
    Int first = kMostFrames, last = 0;
    for (const Runner& runner : runners) {
        const std::string who = name + ", script " + std::to_string(runner.script) + ' ';
        if (!runner.fault.empty())
            findings.fault("Scpt", 5310, who + runner.fault);
        else if (runner.endedAt < 0)
            findings.fault("Scpt", 5310, who + "does not end");
        first = std::min(first, runner.endedAt);
        last = std::max(last, runner.endedAt);
    }
    if (last < kLeastFrames)
        findings.fault("Scpt", 5310, name + " lasts " + std::to_string(last) + " frames, fewer than 34");
    if (first != last)
        findings.note("Scpt", 5310,
            name + ": the sprites leave between frame " + std::to_string(first) + " and " + std::to_string(last));
}

} // namespace

void checkScripts(const Stock& stock, Findings& findings)
{
    const Bytes* data = stock.find("Scpt", 5310);
    if (!data)
        return;
    const auto scripts = scriptsOf(*data);
    if (!scripts || I(scripts->size()) != kScripts)
        return findings.fault("Scpt", 5310, "has to hold 13 scripts, and nothing behind them");
    constexpr const char* kMethods[] = {"float", "ferry", "ford"};
    for (Int m = 0; m < 3; ++m) {
        checkScene(std::string(kMethods[m]) + ", safe", {7 + m, 1, 2, 0}, *scripts, findings);
        checkScene(std::string(kMethods[m]) + ", accident", {3, 4, 5, 6, 10 + m, 2, 0}, *scripts, findings);
    }
}

} // namespace Rsrc
