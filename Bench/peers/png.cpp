// PNG encoders on the published frame (512 by 322, 1 is black), and a stored-blocks floor.
#include "peers.h"

#include <png.h>
#include <zlib.h>

#ifdef PEERS_DEFLATE
#include <libdeflate.h>
#endif
#ifdef PEERS_SPNG
#include <spng.h>
#endif

#include <cstdlib>
#include <cstring>

namespace peers {
namespace {

constexpr int W = kScreenW, H = kFrameH;
using Bytes = std::vector<std::uint8_t>;

struct Rows { // the frame at one depth; `row` bytes each
    int row;
    Bytes px;
};
Rows rows(int bits)
{
    Rows r{W * bits / 8, Bytes(std::size_t(W) * bits / 8 * H)};
    for (int y = 0; y < H; y++)
        for (int x = 0; x < W; x++) {
            const bool black = picture().get(x, y + 20);
            std::uint8_t* p = &r.px[std::size_t(y) * r.row];
            if (bits == 32) {
                std::memset(p + 4 * x, black ? 0 : 255, 3);
                p[4 * x + 3] = 255;
            } else if (bits == 24) {
                std::memset(p + 3 * x, black ? 0 : 255, 3);
            } else if (bits == 8) {
                p[x] = black ? 0 : 255;
            } else if (!black) {
                p[x >> 3] |= 0x80 >> (x & 7); // gray: 0 is black
            }
        }
    return r;
}

std::string decoded(const Bytes& file)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_memory(&image, file.data(), file.size()))
        return "no picture";
    image.format = PNG_FORMAT_RGBA;
    Bytes px(PNG_IMAGE_SIZE(image));
    if (!png_image_finish_read(&image, nullptr, px.data(), 0, nullptr))
        return "broken picture";
    if (image.width != W || image.height != H)
        return "wrong size";
    for (int y = 0; y < H; y++)
        for (int x = 0; x < W; x++) {
            const std::uint8_t v = picture().get(x, y + 20) ? 0 : 255;
            const std::uint8_t* p = &px[4 * (std::size_t(y) * W + x)];
            if (p[0] != v || p[1] != v || p[2] != v || p[3] != 255)
                return "wrong pixel";
        }
    return "";
}

struct Settings {
    int level = -1, filters = -1, strategy = -1;
};

void libpng(const Rows& r, int bits, Settings s, Bytes& out)
{
    out.clear();
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    if (setjmp(png_jmpbuf(png)))
        std::abort();
    png_set_write_fn(
        png, &out,
        [](png_structp p, png_bytep data, png_size_t n) {
            auto* to = static_cast<Bytes*>(png_get_io_ptr(p));
            to->insert(to->end(), data, data + n);
        },
        [](png_structp) {});
    png_set_IHDR(png, info, W, H, bits >= 24 ? 8 : bits,
        bits == 32       ? PNG_COLOR_TYPE_RGBA
            : bits == 24 ? PNG_COLOR_TYPE_RGB
                         : PNG_COLOR_TYPE_GRAY,
        PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (s.level >= 0)
        png_set_compression_level(png, s.level);
    if (s.filters >= 0)
        png_set_filter(png, 0, s.filters);
    if (s.strategy >= 0)
        png_set_compression_strategy(png, s.strategy);
    png_write_info(png, info);
    for (int y = 0; y < H; y++)
        png_write_row(png, &r.px[std::size_t(y) * r.row]);
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
}

#ifdef PEERS_SPNG
void spng(const Rows& r, int bits, Bytes& out)
{
    spng_ctx* ctx = spng_ctx_new(SPNG_CTX_ENCODER);
    spng_set_option(ctx, SPNG_ENCODE_TO_BUFFER, 1);
    spng_ihdr ihdr{};
    ihdr.width = W;
    ihdr.height = H;
    ihdr.bit_depth = bits == 32 ? 8 : bits;
    ihdr.color_type = bits == 32 ? SPNG_COLOR_TYPE_TRUECOLOR_ALPHA : SPNG_COLOR_TYPE_GRAYSCALE;
    spng_set_ihdr(ctx, &ihdr);
    if (spng_encode_image(ctx, r.px.data(), r.px.size(), SPNG_FMT_PNG, SPNG_ENCODE_FINALIZE))
        std::abort();
    size_t n = 0;
    int error = 0;
    void* file = spng_get_png_buffer(ctx, &n, &error);
    out.assign(static_cast<std::uint8_t*>(file), static_cast<std::uint8_t*>(file) + n);
    std::free(file);
    spng_ctx_free(ctx);
}
#endif

#ifdef PEERS_DEFLATE
// A PNG around a zlib stream that `compress` writes from the filtered rows.
template <class Compress> void wrapped(int bits, Bytes& out, std::size_t room, Compress compress)
{
    auto u32 = [](std::uint8_t* p, std::uint32_t v) {
        v = __builtin_bswap32(v);
        std::memcpy(p, &v, 4);
    };
    out.resize(8 + 25 + 12 + room + 12);
    std::uint8_t* p = out.data();
    std::memcpy(p, "\x89PNG\r\n\x1a\n", 8);
    p += 8;
    auto close = [&](const char* type, std::size_t n) { // the data already stand at p + 8
        u32(p, std::uint32_t(n));
        std::memcpy(p + 4, type, 4);
        u32(p + 8 + n, libdeflate_crc32(0, p + 4, n + 4));
        p += 12 + n;
    };
    u32(p + 8, W);
    u32(p + 12, H);
    std::memcpy(p + 16, bits == 32 ? "\x08\x06\0\0" : "\x01\0\0\0", 5);
    close("IHDR", 13);
    close("IDAT", compress(p + 8));
    close("IEND", 0);
    out.resize(std::size_t(p - out.data()));
}

std::size_t raw(const Rows& r) { return std::size_t(r.row + 1) * H; } // 20930 at one bit
void filtered(const Rows& r, std::uint8_t* to)
{ // filter type 0 on every row
    for (int y = 0; y < H; y++, to += r.row + 1) {
        to[0] = 0;
        std::memcpy(to + 1, &r.px[std::size_t(y) * r.row], r.row);
    }
}

// No compression at all: one stored block, so what is left is the two checksums.
void stored(const Rows& r, Bytes& out)
{
    const std::size_t n = raw(r);
    wrapped(1, out, 2 + 5 + n + 4, [&](std::uint8_t* d) {
        std::memcpy(d, "\x78\x01\x01", 3);
        d[3] = n & 255;
        d[4] = n >> 8;
        d[5] = ~d[3];
        d[6] = ~d[4];
        filtered(r, d + 7);
        const std::uint32_t sum = __builtin_bswap32(libdeflate_adler32(1, d + 7, n));
        std::memcpy(d + 7 + n, &sum, 4);
        return 2 + 5 + n + 4;
    });
}
void deflated(libdeflate_compressor* c, int bits, const Rows& r, Bytes& out)
{
    static thread_local Bytes rows;
    const std::size_t n = raw(r), room = libdeflate_zlib_compress_bound(c, n);
    rows.resize(n);
    filtered(r, rows.data());
    wrapped(bits, out, room, [&](std::uint8_t* d) { return libdeflate_zlib_compress(c, rows.data(), n, d, room); });
}
#endif

} // namespace

void registerPng()
{
    struct Variant {
        const char* lib;
        int bits;
        Settings s;
    };
    const Variant variants[] = {
        {"libpng-rgba32-default", 32, {}},
        {"libpng-rgba32-level1-nofilter", 32, {1, PNG_FILTER_NONE, -1}},
        {"libpng-rgb24-default", 24, {}},
        {"libpng-rgb24-level1-nofilter", 24, {1, PNG_FILTER_NONE, -1}},
        {"libpng-gray8-default", 8, {}},
        {"libpng-gray1-default", 1, {}},
        {"libpng-gray1-level1", 1, {1, PNG_FILTER_NONE, -1}},
        {"libpng-gray1-level9", 1, {9, PNG_FILTER_NONE, -1}},
        {"libpng-gray1-rle", 1, {1, PNG_FILTER_NONE, Z_RLE}},
        {"libpng-gray1-huffman-only", 1, {1, PNG_FILTER_NONE, Z_HUFFMAN_ONLY}},
    };
    for (const Variant& v : variants) {
        auto r = std::make_shared<Rows>(rows(v.bits));
        auto out = std::make_shared<Bytes>();
        libpng(*r, v.bits, v.s, *out);
        add(
            "png_512x322", v.lib, [r, out, v] { libpng(*r, v.bits, v.s, *out); }, [out] { return decoded(*out); },
            double(out->size()));
    }
#ifdef PEERS_SPNG
    for (int bits : {32, 8, 1}) {
        auto r = std::make_shared<Rows>(rows(bits));
        auto out = std::make_shared<Bytes>();
        spng(*r, bits, *out);
        add(
            "png_512x322",
            bits == 32      ? "libspng-rgba32"
                : bits == 8 ? "libspng-gray8"
                            : "libspng-gray1",
            [r, out, bits] { spng(*r, bits, *out); }, [out] { return decoded(*out); }, double(out->size()));
    }
#endif
#ifdef PEERS_DEFLATE
    for (auto [bits, level] : {std::pair{1, 1}, {1, 6}, {1, 12}, {32, 1}, {32, 6}}) {
        auto r = std::make_shared<Rows>(rows(bits));
        auto out = std::make_shared<Bytes>();
        auto c = std::shared_ptr<libdeflate_compressor>(libdeflate_alloc_compressor(level), libdeflate_free_compressor);
        deflated(c.get(), bits, *r, *out);
        add(
            "png_512x322",
            std::string(bits == 1 ? "libdeflate-gray1" : "libdeflate-rgba32") + "-level" + std::to_string(level),
            [r, out, c, bits] { deflated(c.get(), bits, *r, *out); }, [out] { return decoded(*out); },
            double(out->size()));
    }
    auto r = std::make_shared<Rows>(rows(1));
    auto out = std::make_shared<Bytes>();
    stored(*r, *out);
    add(
        "png_512x322", "stored-floor", [r, out] { stored(*r, *out); }, [out] { return decoded(*out); },
        double(out->size()));
#endif
}

} // namespace peers
