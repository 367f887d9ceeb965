// Inputs, geometry and registration of the peer benchmark.

#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace peers {

template <class T> struct Aligned { // rows start on cache lines
    using value_type = T;
    T* allocate(std::size_t n) { return static_cast<T*>(::operator new(n * sizeof(T), std::align_val_t(64))); }
    void deallocate(T* p, std::size_t) { ::operator delete(p, std::align_val_t(64)); }
    bool operator==(const Aligned&) const { return true; }
};

// A one-bit picture in the project's own layout: most significant bit leftmost, 1 is black. There
// are `kPad` spare bytes before the first row and after the last, so that a reader of whole words
// may touch a little more than a row.
class Mono {
public:
    static constexpr int kPad = 64;
    Mono() = default;
    Mono(int width, int height, int stride = 0)
        : w(width), h(height), rowBytes(stride ? stride : ((width + 15) >> 3) & ~1),
          store(std::size_t(rowBytes) * height + 2 * kPad)
    {
    }
    std::uint8_t* row(int y) { return store.data() + kPad + std::ptrdiff_t(y) * rowBytes; }
    const std::uint8_t* row(int y) const { return store.data() + kPad + std::ptrdiff_t(y) * rowBytes; }
    bool get(int x, int y) const
    {
        return unsigned(x) < unsigned(w) && unsigned(y) < unsigned(h) && (row(y)[x >> 3] >> (7 - (x & 7)) & 1);
    }
    void set(int x, int y, bool on)
    {
        if (unsigned(x) >= unsigned(w) || unsigned(y) >= unsigned(h))
            return;
        std::uint8_t bit = 0x80 >> (x & 7);
        if (on)
            row(y)[x >> 3] |= bit;
        else
            row(y)[x >> 3] &= ~bit;
    }
    bool samePixels(const Mono& o) const
    {
        if (w != o.w || h != o.h)
            return false;
        for (int y = 0; y < h; y++)
            for (int x = 0; x < w; x++)
                if (get(x, y) != o.get(x, y))
                    return false;
        return true;
    }
    int w = 0, h = 0, rowBytes = 0;

private:
    std::vector<std::uint8_t, Aligned<std::uint8_t>> store;
};

struct Box {
    int left, top, width, height;
    int right() const { return left + width; }
    int bottom() const { return top + height; }
};

// Transfer modes, as the low two bits of the drawing modes.
enum Mode { kCopy = 0, kOr = 1, kXor = 2, kBic = 3 };

// ---- geometry of the operations -----------------------------------------------------------------
inline constexpr int kScreenW = 512, kScreenH = 342, kFrameH = 322;
inline constexpr Box kFull{0, 0, 512, 342};
inline constexpr Box kMid{101, 57, 262, 155};
inline constexpr Box kSmall{37, 41, 13, 13};
inline constexpr std::uint8_t kGray[8] = {0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55};
inline constexpr std::uint8_t kBlack[8] = {255, 255, 255, 255, 255, 255, 255, 255};
inline constexpr Box kBlitSize{0, 0, 494, 304}; // source corner 0, 0
inline constexpr int kTextX = 5, kTextY = 100, kTextAdvance = 6, kTextCount = 80;

struct FillOp {
    const char* name;
    Box box;
    const std::uint8_t* pattern;
    Mode mode;
};
inline constexpr FillOp kFills[] = {
    {"fill_gray_512x342", kFull, kGray, kCopy},
    {"fill_gray_262x155", kMid, kGray, kCopy},
    {"fill_gray_13x13", kSmall, kGray, kCopy},
    {"fill_black_512x342", kFull, kBlack, kCopy},
    {"fill_black_262x155", kMid, kBlack, kCopy},
    {"fill_black_13x13", kSmall, kBlack, kCopy},
    {"xor_black_512x342", kFull, kBlack, kXor},
    {"xor_black_262x155", kMid, kBlack, kXor},
    {"xor_gray_262x155", kMid, kGray, kXor},
};

// A blit takes `box.width` by `box.height` pixels from 0, 0 of its source to `box.left`, `box.top`.
enum class Source { picture, icon };
struct BlitOp {
    const char* name;
    Source source;
    Box box;
    Mode mode;
};
inline constexpr BlitOp kBlits[] = {
    {"blit_aligned_494x304", Source::picture, {8, 20, 494, 304}, kCopy},
    {"blit_shift3_494x304", Source::picture, {11, 20, 494, 304}, kCopy},
    {"blit_shift3_or_494x304", Source::picture, {11, 20, 494, 304}, kOr},
    {"blit_shift3_xor_494x304", Source::picture, {11, 20, 494, 304}, kXor},
    {"blit_shift3_bic_494x304", Source::picture, {11, 20, 494, 304}, kBic},
    {"icon_aligned_32x32", Source::icon, {64, 40, 32, 32}, kCopy},
    {"icon_shift3_32x32", Source::icon, {67, 41, 32, 32}, kCopy},
    {"icon_shift3_or_32x32", Source::icon, {67, 41, 32, 32}, kOr},
};
inline constexpr Box kSprite{101, 57, 40, 30};

struct ScaleOp {
    const char* name;
    int sw, sh;
    Box dst;
};
inline constexpr ScaleOp kScales[] = {
    {"scale_256x171_to_512x342", 256, 171, {0, 0, 512, 342}},
    {"scale_300x200_to_494x304", 300, 200, {9, 19, 494, 304}},
};

// ---- inputs (deterministic) ---------------------------------------------------------------------
const Mono& screenBefore(); // the destination's content before every operation
const Mono& picture();      // 512 by 342, dithered
const Mono& smallPicture(); // 300 by 200; the 2x scaling reads its left top 256 by 171
const Mono& icon();         // 32 by 32
const Mono& sprite();       // 40 by 30, black only inside the mask
const Mono& spriteMask();   // 40 by 30
struct Glyph {
    std::uint8_t rows[12];
};
const Glyph& glyph(int c); // 8 by 12, c from 32 to 126
const std::string& text(); // kTextCount characters

// What the operations must leave in the destination, worked out pixel by pixel.
Mono expectFill(const FillOp&);
Mono expectBlit(const BlitOp&);
Mono expectSprite();
Mono expectScale(const ScaleOp&);
Mono expectText();

// Region operands: rows of [l, r) spans, as boxes of height 1 or plain rectangles.
struct RegionOp {
    const char* name;
    std::vector<Box> a, b;
    char op;
}; // op one of | & - ^
const std::vector<RegionOp>& regionOps();
const std::vector<Box>& randomBoxes();                  // 200
const std::vector<std::pair<int, int>>& randomPoints(); // 1024, x and y
bool inRegionOp(const RegionOp&, int x, int y);
bool inRandomBoxes(int x, int y);
const RegionOp& discUnion(); // the operands of the point test: inside a or inside b

// ---- registration -------------------------------------------------------------------------------
struct Case {
    std::string op, lib;
    std::string problem; // empty when the check passed
    double bytes = 0;    // for encoders: size of the result
    double median = -1, cv = 0;
};
std::vector<std::unique_ptr<Case>>& cases();

// Adds one measurement. `run` is called once and `check` then says what is wrong with the result
// (empty: nothing); only then is `run` timed. `batch` is the number of operations in one `run`.
template <class Run, class Check>
void add(const std::string& op, const std::string& lib, Run run, Check check, double bytes = 0, int batch = 1,
    bool realTime = false)
{
    run();
    auto owned = std::make_unique<Case>();
    Case* c = owned.get();
    c->op = op;
    c->lib = lib;
    c->problem = check();
    c->bytes = bytes;
    cases().push_back(std::move(owned));
    if (!c->problem.empty())
        return;
    auto body = [run, batch](benchmark::State& state) mutable {
        for (auto _ : state) {
            run();
            benchmark::ClobberMemory();
        }
        state.counters["batch"] = batch;
    };
    auto* b = benchmark::RegisterBenchmark((op + ":" + lib).c_str(), body);
    if (realTime)
        b->UseRealTime();
}

inline std::string same(const Mono& got, const Mono& want)
{
    for (int y = 0; y < want.h; y++)
        for (int x = 0; x < want.w; x++)
            if (got.get(x, y) != want.get(x, y))
                return "differs at h " + std::to_string(x) + ", v " + std::to_string(y);
    return "";
}

void registerProject(); // what the project itself does

} // namespace peers
