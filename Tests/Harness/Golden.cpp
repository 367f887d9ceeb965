#include "Tests/Harness/Golden.h"

#include "MacToolbox/App/Png.h"

#include <gtest/gtest.h>
#include <png.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace Harness {

using namespace MacToolbox;

namespace {

struct Difference {
    Int count = 0;
    Rect bounds; // of the pixels that differ
};

/// Of two frames of one size.
Difference compare(const Frame& a, const Frame& b)
{
    Difference difference;
    for (Int v = 0, i = 0; v < a.height; ++v)
        for (Int h = 0; h < a.width; ++h, ++i) {
            if (a.pixels[static_cast<std::size_t>(i)] == b.pixels[static_cast<std::size_t>(i)])
                continue;
            const Rect pixel{v, h, v + 1, h + 1};
            difference.bounds = difference.count++ ? difference.bounds.unionWith(pixel) : pixel;
        }
    return difference;
}

} // namespace

FramePtr readPicture(const std::string& path)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, path.c_str()))
        return nullptr;
    image.format = PNG_FORMAT_GRAY;
    auto frame = std::make_shared<Frame>();
    frame->width = image.width;
    frame->height = image.height;
    frame->pixels.resize(PNG_IMAGE_SIZE(image));
    if (!png_image_finish_read(&image, nullptr, frame->pixels.data(), 0, nullptr))
        return nullptr;
    for (auto& pixel : frame->pixels)
        pixel = pixel < 128;
    return frame;
}

bool writePicture(const Frame& frame, const std::string& path)
{
    const auto png = makePNG(frame);
    if (!png)
        return false;
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), error);
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(png->data()), static_cast<std::streamsize>(png->size()));
    return file.good();
}

void expectFrame(const FramePtr& frame, const std::string& name)
{
    ASSERT_TRUE(frame) << name << ": nothing was published";
    const std::string golden = std::string(WR_GOLDEN_FOLDER) + "/" + name + ".png";
    const std::string actual = std::string(WR_ACTUAL_FOLDER) + "/" + name + ".png";
    if (const char* const update = std::getenv("UPDATE_GOLDEN"); update && std::string(update) == "1") {
        ASSERT_TRUE(writePicture(*frame, golden)) << golden;
        return;
    }
    const FramePtr expected = readPicture(golden);
    if (!expected || expected->width != frame->width || expected->height != frame->height) {
        writePicture(*frame, actual);
        ADD_FAILURE() << name << ": " << (expected ? "another size than " : "there is no ") << golden << "; see "
                      << actual;
        return;
    }
    const Difference difference = compare(*expected, *frame);
    if (difference.count == 0)
        return;
    writePicture(*frame, actual);
    ADD_FAILURE() << name << ": " << difference.count << " pixels differ, inside " << difference.bounds.description()
                  << "; see " << actual << " beside " << golden;
}

} // namespace Harness
