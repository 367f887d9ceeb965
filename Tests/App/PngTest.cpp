#include "MacToolbox/App/Png.h"

#include <gtest/gtest.h>
#include <png.h>

#include <string_view>

using namespace MacToolbox;

TEST(Png, HoldsPlainBlackAndWhiteToThePixel)
{
    for (const auto& [width, height] : {std::pair<Int, Int>{512, 322}, {1, 1}, {13, 200}}) {
        Frame frame;
        frame.width = width, frame.height = height;
        for (Int i = 0; i < width * height; ++i)
            frame.pixels.push_back(i * i % 7 < 3);
        const auto file = makePNG(frame);
        ASSERT_TRUE(file);

        png_image image{};
        image.version = PNG_IMAGE_VERSION;
        ASSERT_TRUE(png_image_begin_read_from_memory(&image, file->data(), file->size()));
        EXPECT_EQ(image.format, static_cast<png_uint_32>(PNG_FORMAT_RGB)); // 8 bits, colour, no alpha
        ASSERT_EQ(image.width, static_cast<png_uint_32>(width));
        ASSERT_EQ(image.height, static_cast<png_uint_32>(height));
        Bytes rgb(PNG_IMAGE_SIZE(image));
        ASSERT_TRUE(png_image_finish_read(&image, nullptr, rgb.data(), 0, nullptr));
        for (std::size_t i = 0; i < rgb.size(); ++i)
            ASSERT_EQ(rgb[i], frame.pixels[i / 3] ? 0 : 255) << i;

        const std::string_view bytes(reinterpret_cast<const char*>(file->data()), file->size());
        for (const char* chunk : {"tIME", "gAMA", "tEXt"})
            EXPECT_EQ(bytes.find(chunk), std::string_view::npos) << chunk;
    }
}

TEST(Png, OfNothingIsNothing)
{
    EXPECT_FALSE(makePNG(Frame{}));
    EXPECT_FALSE(makePNG(Frame{{}, 5, 0}));
    EXPECT_FALSE(makePNG(Frame{Bytes(9), 5, 2})); // fewer pixels than it says
    Screen::shared().startAfresh();
    EXPECT_FALSE(screenPNG());
}
