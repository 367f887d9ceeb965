#include "Tools/rsrc/Bits.h"

#include <png.h>

namespace Rsrc {

namespace {

constexpr png_uint_32 kLargestSide = 8192;

std::string sizeText(Int height, Int width)
{
    return std::to_string(width) + " wide and " + std::to_string(height) + " high";
}

} // namespace

Bits Bits::part(const Rect& r) const
{
    Bits out(r.height(), r.width());
    for (Int v = 0; v < out.height; ++v)
        for (Int h = 0; h < out.width; ++h)
            if (black(r.top + v, r.left + h))
                out.set(v, h);
    return out;
}

Bits Bits::mirrored() const
{
    Bits out(height, width);
    for (Int v = 0; v < height; ++v)
        for (Int h = 0; h < width; ++h)
            if (black(v, width - 1 - h))
                out.set(v, h);
    return out;
}

void Bits::paint(const Bits& other, Int top, Int left)
{
    for (Int v = 0; v < other.height; ++v)
        for (Int h = 0; h < other.width; ++h)
            if (other.black(v, h) && top + v >= 0 && top + v < height && left + h >= 0 && left + h < width)
                set(top + v, left + h);
}

Bits bitsFrom(std::span<const std::uint8_t> bytes, Int rowBytes, Int height, Int width)
{
    Bits out(height, width);
    for (Int v = 0; v < height; ++v)
        for (Int h = 0; h < std::min(width, rowBytes * 8); ++h) {
            const auto at = static_cast<std::size_t>(v * rowBytes + h / 8);
            if (at < bytes.size() && bytes[at] >> (7 - h % 8) & 1)
                out.set(v, h);
        }
    return out;
}

PngImage readPng(const Source& name)
{
    const std::string path = name.path();
    const Bytes file = fileContents(path, name);
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_memory(&image, file.data(), file.size()))
        name.fail(path + " is no PNG file: " + image.message);
    if (image.width > kLargestSide || image.height > kLargestSide) {
        png_image_free(&image);
        name.fail(path + " is too large");
    }
    image.format = PNG_FORMAT_RGBA;
    Bytes pixels(PNG_IMAGE_SIZE(image));
    if (!png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr))
        name.fail(path + " is damaged: " + image.message);
    PngImage out{Bits(image.height, image.width), Bits(image.height, image.width), false};
    for (Int v = 0; v < out.black.height; ++v)
        for (Int h = 0; h < out.black.width; ++h) {
            const std::uint8_t* p = &pixels[static_cast<std::size_t>(v * out.black.width + h) * 4];
            if (p[3] == 0) {
                out.hasTransparency = true;
                continue;
            }
            const bool black = p[0] == 0 && p[1] == 0 && p[2] == 0, white = p[0] == 255 && p[1] == 255 && p[2] == 255;
            if (p[3] != 255 || !(black || white))
                name.fail(path + ": the pixel " + std::to_string(h) + " from the left, " + std::to_string(v)
                    + " from the top is neither black nor white");
            out.opaque.set(v, h);
            if (black)
                out.black.set(v, h);
        }
    return out;
}

Bits readBits(const Source& name, Int height, Int width)
{
    PngImage image = readPng(name);
    if (image.black.height != height || image.black.width != width)
        name.fail(name.path() + " is " + sizeText(image.black.height, image.black.width) + ", not "
            + sizeText(height, width));
    return std::move(image.black);
}

bool writePng(const std::string& path, const Bits& bits)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(bits.width);
    image.height = static_cast<png_uint_32>(bits.height);
    image.format = PNG_FORMAT_GRAY;
    Bytes pixels(static_cast<std::size_t>(bits.height * bits.width), 255);
    for (Int v = 0; v < bits.height; ++v)
        for (Int h = 0; h < bits.width; ++h)
            if (bits.black(v, h))
                pixels[static_cast<std::size_t>(v * bits.width + h)] = 0;
    return png_image_write_to_file(&image, path.c_str(), 0, pixels.data(), 0, nullptr) != 0;
}

} // namespace Rsrc
