#include "MacToolbox/App/Png.h"

#include <png.h>

#include <csetjmp>

namespace MacToolbox {

namespace {

void append(png_structp png, png_bytep data, png_size_t count)
{
    auto& out = *static_cast<Bytes*>(png_get_io_ptr(png));
    out.insert(out.end(), data, data + count);
}

/// Writes the whole file to `out`; nothing with a destructor lives here, since libpng leaves by a jump.
bool encode(const Frame& frame, png_structp png, png_infop info, Bytes& row, Bytes& out)
{
    if (setjmp(png_jmpbuf(png)))
        return false;
    png_set_write_fn(png, &out, append, nullptr);
    png_set_compression_level(png, 1);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
    png_set_IHDR(png, info, static_cast<png_uint_32>(frame.width), static_cast<png_uint_32>(frame.height), 8,
        PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    const std::uint8_t* pixel = frame.pixels.data();
    for (Int y = 0; y < frame.height; ++y) {
        std::uint8_t* to = row.data();
        for (Int x = 0; x < frame.width; ++x, to += 3)
            to[0] = to[1] = to[2] = *pixel++ ? 0 : 255;
        png_write_row(png, row.data());
    }
    png_write_end(png, info);
    return true;
}

} // namespace

std::optional<Bytes> makePNG(const Frame& frame)
{
    if (frame.width < 1 || frame.height < 1 || I(frame.pixels.size()) < frame.width * frame.height)
        return std::nullopt;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    Bytes out, row(static_cast<std::size_t>(frame.width) * 3);
    const bool done = info && encode(frame, png, info, row, out);
    png_destroy_write_struct(&png, &info);
    return done ? std::optional(std::move(out)) : std::nullopt;
}

std::optional<Bytes> screenPNG()
{
    const FramePtr frame = Screen::shared().snapshot();
    return frame ? makePNG(*frame) : std::nullopt;
}

} // namespace MacToolbox
