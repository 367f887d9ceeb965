#include "Tools/rsrc/Build.h"
#include "Tools/rsrc/Forms.h"

#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/QuickDraw/Picture.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"

#include <filesystem>
#include <fstream>
#include <random>

#include <gtest/gtest.h>
#include <unistd.h>

using namespace Rsrc;
namespace fs = std::filesystem;

namespace {

class Sources : public testing::Test {
protected:
    void SetUp() override
    {
        folder_ = testing::TempDir() + "sources-" + std::to_string(::getpid());
        fs::remove_all(folder_);
        fs::create_directories(folder_);
    }
    void TearDown() override { fs::remove_all(folder_); }

    void put(const std::string& name, const std::string& contents) const
    {
        fs::create_directories(fs::path(folder_ + '/' + name).parent_path());
        std::ofstream(folder_ + '/' + name, std::ios::binary) << contents;
    }

    /// The one resource of a source.
    Bytes compile(const std::string& yaml)
    {
        put("one.yaml", yaml);
        std::vector<std::string> faults;
        const Archive archive = compileFolder(folder_, faults);
        for (const std::string& fault : faults)
            ADD_FAILURE() << fault;
        return archive.items.size() == 1 ? archive.items.begin()->second.data : Bytes{};
    }

    std::string folder_;
};

Bits noise(Int height, Int width, unsigned seed)
{
    std::mt19937 random(seed);
    Bits bits(height, width);
    for (Int v = 0; v < height; ++v)
        for (Int h = 0; h < width; ++h)
            // Runs, pairs of rows and noise, so that every way of packing comes up.
            if (h % 64 < 16       ? random() % 2 == 0
                    : h % 64 < 32 ? v % 2 == 0
                    : h % 64 < 48 ? v % 40 < 30
                                  : random() % 16 == 0)
                bits.set(v, h);
    return bits;
}

} // namespace

TEST_F(Sources, FaultsNameTheirPlaceAndLeaveTheRestStanding)
{
    const struct {
        const char* yaml;
        const char* fault;
    } kCases[] = {
        {"STR#:\n  1:\n    1: \"a\"\n    1: \"b\"\n", "bad.yaml:4: \"1\" stands here twice"},
        {"STR#:\n  1: {1: \"a\"}\n  1: {1: \"b\"}\n", "bad.yaml:3: \"1\" stands here twice"},
        {"STR#:\n  1:\n    1: \"a\"\n    3: \"b\"\n", "bad.yaml:4: number 3 stands where 2 is due"},
        {"STR#:\n  1:\n    1: \"日\"\n", "bad.yaml:3: the character \"日\" is not in the character set"},
        {"STR#:\n  1:\n    1:\n", "bad.yaml:3: a value is missing"},
        {"STR#:\n  1: {1: \"a\", colour: red}\n", "bad.yaml:2: \"colour\" is not known here"},
        {"STR#:\n  40000: {1: \"a\"}\n", "bad.yaml:2: 40000 is not from -32768 to 32767"},
        {"DITL:\n  1:\n    items:\n      1: {button: \"a\", text: \"b\", rect: [0, 0, 1, 1]}\n",
            "bad.yaml:4: an item is either"},
        {"DITL:\n  1:\n    items:\n      1: {buton: \"a\", rect: [0, 0, 1, 1]}\n",
            "bad.yaml:4: \"buton\" is not known here"},
        {"DITL:\n  1:\n    items:\n      1: {button: \"a\", rect: [0, 0, 1]}\n", "bad.yaml:4: a rectangle is"},
        {"DITL:\n  1:\n    items:\n      1: {button: \"a\", rect: [5, 0, 1, 1]}\n",
            "bad.yaml:4: the rectangle ends before it begins"},
        {"DITL:\n  1:\n    items:\n      1: {button: \"a\"}\n", "bad.yaml:4: \"rect\" is missing"},
        {"MENU:\n  1: {title: \"a\", items: {1: {text: \"\"}}}\n", "bad.yaml:2: an item without a text"},
        {"ICON:\n  1: none.png\n", "none.png cannot be read"},
        {"ICON:\n  1: bad.yaml\n", "is no PNG file"},
        {"ICON:\n  1: small.png\n", "small.png is 8 wide and 4 high, not 32 wide and 32 high"},
        {"Imag:\n  1: {frames: {0: {png: small.png, crop: [0, 0, 9, 9]}}}\n",
            "bad.yaml:2: the part does not lie in the picture"},
        {"Imag:\n  1: {frames: {0: {png: small.png, size: [4, 9]}}}\n", "bad.yaml:2: the frame is 4 high and 8 wide"},
        {"Scpt:\n  1: {scripts: {0: [jump 3]}}\n", "bad.yaml:2: \"jump\" is no step"},
        {"Scpt:\n  1: {scripts: {0: [wait]}}\n", "bad.yaml:2: \"wait\" takes 1 arguments"},
        {"Scpt:\n  1: {scripts: {0: [repeat 3 there]}}\n", "bad.yaml:2: there is no label \"there\""},
        {"snd:\n  1: {wav: small.png}\n", "is no WAV file"},
        {"CONF:\n  1: {speed: 4, huntTime: 3, password: \"longer than ten\"}\n",
            "bad.yaml:2: the text has 15 characters"},
        {"XYZW:\n  1: {a: 1}\n", "bad.yaml:2: XYZW has no form of its own"},
        {"TOOLONG:\n  1: {hex: \"00\"}\n", "bad.yaml:1: a type has up to four characters"},
        {"STR#:\n  1: {1: \"a\"\n", "bad.yaml:"},
        {"- a list\n", "bad.yaml:1: a source is a map of types"},
    };
    put("good/good.yaml", "STR#:\n  7: {1: \"stays\"}\n");
    ASSERT_TRUE(writePng(folder_ + "/small.png", Bits(4, 8)));
    for (const auto& test : kCases) {
        SCOPED_TRACE(test.yaml);
        put("bad.yaml", test.yaml);
        std::vector<std::string> faults;
        const Archive archive = compileFolder(folder_, faults);
        ASSERT_EQ(faults.size(), 1U);
        EXPECT_NE(faults[0].find(test.fault), std::string::npos) << faults[0];
        EXPECT_TRUE(archive.items.count({os("STR#"), 7}));
        EXPECT_LE(archive.items.size(), 2U);
    }
    put("bad.yaml", "STR#:\n  8: {1: \"" + std::string(256, 'x') + "\"}\n  7: {1: \"again\"}\n");
    std::vector<std::string> faults;
    compileFolder(folder_, faults);
    ASSERT_EQ(faults.size(), 2U);
    EXPECT_NE(faults[0].find("bad.yaml:2: the text has 256 characters"), std::string::npos) << faults[0];
    EXPECT_NE(faults[1].find("good.yaml:2: STR# 7 stands already at"), std::string::npos) << faults[1];
}

TEST_F(Sources, FormsAreExactToTheByte)
{
    const struct {
        const char* yaml;
        const char* hex;
    } kCases[] = {
        {"STR#:\n  1:\n    about: notes\n    1: \"é\"\n    2: \"\"\n    3: |\n      a\n      b\n",
            "0003 018e 0003 610d 62"},
        {"WST#:\n  1: {1: \"abc\", 2: \"de\"}\n", "0002 0003 6162 6300 0002 6465"},
        {"DITL:\n  1:\n    items:\n      1: {button: \"OK!\", rect: [1, 2, 3, 4]}\n      2: {text: \"\", rect: [-1, 0, "
         "0, 0]}\n"
         "      3: {user: ground, disabled: true, rect: [0, 0, 1, 1]}\n      4: {picture: -2, disabled: false, rect: "
         "[0, 0, 1, 1]}\n",
            "0003 0000 0000 0001 0002 0003 0004 0403 4f4b 2100 0000 0000 ffff 0000 0000 0000 8800"
            " 0000 0000 0000 0000 0001 0001 8000 0000 0000 0000 0000 0001 0001 4002 fffe"},
        {"DLOG:\n  1: {bounds: [1, 2, 3, 4], procID: 1, items: 9, title: \"T\"}\n",
            "0001 0002 0003 0004 0001 0000 0000 0000 0000 0009 0154"},
        {"ALRT:\n  1: {bounds: [1, 2, 3, 4], items: 9}\n", "0001 0002 0003 0004 0009 5555"},
        {"WIND:\n  1: {bounds: [1, 2, 3, 4], visible: true}\n", "0001 0002 0003 0004 0002 0001 0000 0000 0000 00"},
        {"CNTL:\n  1: {procID: 160, refCon: -5}\n", "0000 0000 0000 0000 0000 0100 0001 0000 00a0 ffff fffb 00"},
        {"MENU:\n  9: {title: \"\\x14\", items: {1: {text: \"A\", key: \"Q\", mark: 18}, 2: separator}}\n",
            "0009 0000 0000 0000 0000 ffff fffb 0114 0141 0051 1200 012d 0000 0000 00"},
        {"MBAR:\n  1: [128, 129]\n", "0002 0080 0081"},
        {"HVof:\n  1: {legs: [[[-3, 1]], [[2, -2, 2]]]}\n", "fd01 02fe 02fe"},
        {"vers:\n  1: {number: [1, 0x20, 0x80, 0], text: \"1.2\"}\n", "0120 8000 0000 0331 2e32 0331 2e32"},
        {"Scpt:\n  1: {scripts: {0: [frame 2, label a, wait 3, repeat 4 a, end]}}\n",
            "0001 0000 0016 0404 0002 0401 0003 0807 0004 0000 0004 02ff"},
        {"QUIL:\n  2: \"x\"\n", "0178"},
        {"DATA:\n  2: {hex: \"00ff 7\\n\\n8\"}\n", "00ff 78"},
    };
    for (const auto& test : kCases) {
        SCOPED_TRACE(test.yaml);
        EXPECT_EQ(hexText(compile(test.yaml)), test.hex);
    }
    const Bytes conf = compile("CONF:\n  1000: {speed: 4, huntTime: 3, signature: \"S\", password: \"pw\", legends: "
                               "[{name: \"Ann\", points: 7000}]}\n");
    ASSERT_EQ(conf.size(), 1108U);
    const Block b(conf);
    EXPECT_EQ(b.u32(0), I(os("QUIL")));
    EXPECT_EQ(b.u16(6), 0x0153);
    EXPECT_EQ(b.u16(294), 0x0270);
    EXPECT_EQ(b.u8(309), 4);
    EXPECT_EQ(b.u16(456), 1);
    EXPECT_EQ(b.u16(458), 10);
    EXPECT_EQ(b.u32(490), 7000);
    EXPECT_EQ(b.u32(782), 10) << "no legends of trains";
}

TEST_F(Sources, TheFileIsReadBackByTheResourceManager)
{
    Archive archive;
    archive.items[{os("TEXT"), -5}] = {Bytes{1, 2, 3}, std::nullopt, ""};
    archive.items[{os("TEXT"), 300}] = {Bytes{}, Bytes{'n'}, ""};
    archive.items[{os("DATA"), 1}] = {Bytes(70000, 9), Bytes{}, ""};
    const auto entries = ResourceFile::parse(archive.image());
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[0].type, os("DATA"));
    EXPECT_EQ(entries[0].data.size(), 70000U);
    EXPECT_TRUE(entries[0].named && entries[0].name.empty());
    EXPECT_EQ(entries[1].id, -5);
    EXPECT_FALSE(entries[1].named);
    EXPECT_EQ(entries[2].name, Bytes{'n'});
    EXPECT_TRUE(ResourceFile::parse(Archive{}.image()).empty());
}

// The shown form of a resource compiles to the same bytes.
TEST_F(Sources, ShownResourcesCompileToThemselves)
{
    put("in/all.yaml", R"(
STR#: {5: {1: "a \"quoted\" \\ “word”\r\x14", 2: ""}, 6: {about: none}}
WST#: {5: {1: "long", 2: "longer"}}
QUIL: {2: "é"}
DITL:
  5:
    items:
      1: {button: "B", rect: [1, 2, 3, 4]}
      2: {check: "", disabled: true, rect: [-5, 0, 3, 4]}
      3: {icon: 7, rect: [0, 0, 1, 1]}
      4: {user: u, rect: [0, 0, 1, 1]}
      5: {type: 132, hex: "0a", rect: [0, 0, 1, 1]}
      6: {type: 99, rect: [0, 0, 1, 1]}
DLOG: {5: {bounds: [0, 0, 9, 9], items: 5, goAway: true, visible: true, refCon: -1, title: "t"}}
ALRT: {5: {bounds: [0, 0, 9, 9], items: 5, stages: 4}}
WIND: {5: {bounds: [0, 0, 9, 9], title: "w"}}
CNTL: {5: {procID: 16, rect: [1, 1, 2, 2], visible: false, title: "c"}}
MENU: {5: {title: "m", enabled: false, items: {1: {text: "x", icon: 1, style: 2, enabled: false}, 2: separator, 3: {text: "-"}}}}
MBAR: {5: [5, -1]}
Scpt: {5: {scripts: {0: [nop, "to 1 2 -3", label l, next, "repeat 0 l", "proc 7", end], 1: []}}}
FOND: {5: {strikes: [{size: 12, id: 5}, {size: 9, style: 1, id: 6}]}}
CONF: {5: {speed: 2, huntTime: 6, signature: "s", hint: "h", password: "p", legends: [{name: "A", points: 9}], trainLegends: [{name: "B", points: 8}]}}
HVof: {5: {dots: [[-1, 2], [3, -4]]}}
vers: {5: {number: [1, 2, 3, 4], region: 5, text: "a", long: "b"}}
ICON: {5: icon.png}
PICT: {5: {png: wide.png, origin: [3, 4]}, 6: {png: icon.png, version: 1}}
Imag: {5: {frames: [wide.png, {blank: [2, 3]}, {png: icon.png, origin: [1, 2], mirror: true}]}}
)");
    ASSERT_TRUE(writePng(folder_ + "/in/icon.png", noise(32, 32, 1)));
    ASSERT_TRUE(writePng(folder_ + "/in/wide.png", noise(70, 300, 2)));
    std::vector<std::string> faults;
    const Archive first = compileFolder(folder_ + "/in", faults);
    ASSERT_TRUE(faults.empty()) << faults[0];
    ASSERT_EQ(first.items.size(), 20U);
    for (const auto& [key, item] : first.items) {
        const Form* form = findForm(key.first);
        ASSERT_NE(form, nullptr);
        const auto text = form->show(key.second, item.data);
        ASSERT_TRUE(text) << form->type;
        const std::string name = typeName(key.first);
        put("out/" + name + std::to_string(key.second) + ".yaml",
            name + ":\n  " + std::to_string(key.second) + ':' + *text + '\n');
        if (form->picture) {
            ASSERT_TRUE(
                writePng(folder_ + "/out/" + name + std::to_string(key.second) + ".png", *form->picture(item.data)));
        }
    }
    const Archive second = compileFolder(folder_ + "/out", faults);
    EXPECT_TRUE(faults.empty()) << faults[0];
    for (const auto& [key, item] : first.items) {
        const auto again = second.items.find(key);
        ASSERT_NE(again, second.items.end());
        EXPECT_EQ(hexText(again->second.data), hexText(item.data)) << typeName(key.first) << ' ' << key.second;
    }
}

TEST_F(Sources, PackedFramesKeepEveryPixel)
{
    unsigned seed = 0;
    for (const auto& [height, width] :
        {std::pair<Int, Int>{1, 1}, {2, 17}, {63, 64}, {64, 64}, {65, 64}, {129, 128}, {300, 494}}) {
        SCOPED_TRACE(testing::Message() << height << " by " << width);
        const Bits bits = noise(height, width, ++seed);
        ASSERT_TRUE(writePng(folder_ + "/f.png", bits));
        const auto frames =
            imageFrames(compile("Imag:\n  1: {frames: [f.png, {png: f.png, mirror: true, origin: [-3, 7]}]}\n"));
        ASSERT_TRUE(frames);
        ASSERT_EQ(frames->size(), 2U);
        EXPECT_EQ((*frames)[0].bits, bits);
        EXPECT_EQ((*frames)[0].rowBytes, (width + 15) / 16 * 2);
        EXPECT_EQ((*frames)[1].bits.mirrored(), bits);
        EXPECT_EQ((*frames)[1].origin, (Point{-3, 7}));
    }
    // The packing by hand: a literal, a run, a pair of rows twice, a zero that does nothing, a run beyond the column.
    const Bytes record{
        0, 1, 0, 0, 0, 28, 0, 0, 0, 0, 0, 2, 0, 0, 0, 0, 0, 7, 0, 16, 1, 0xAA, 0, 0xFE, 0x0F, 0xBE, 1, 2, 0xC0, 5};
    const auto frames = imageFrames(record);
    ASSERT_TRUE(frames);
    std::string left;
    for (Int v = 0; v < 7; ++v)
        left += hexText(std::span((*frames)[0].bits.rows).subspan(static_cast<std::size_t>(v * 2), 1));
    EXPECT_EQ(left, "aa0f0f01020102");
}

// The picture of a PNG, played by the Toolbox, shows its pixels.
TEST_F(Sources, PicturesPlayBackAsTheirPng)
{
    for (const Int width : {9, 60, 300, 2100})
        for (const int version : {1, 2}) {
            SCOPED_TRACE(testing::Message() << width << " wide, version " << version);
            const Bits bits = noise(41, width, static_cast<unsigned>(width));
            ASSERT_TRUE(writePng(folder_ + "/p.png", bits));
            const auto picture = std::make_shared<Block>(
                compile("PICT:\n  1: {png: p.png, origin: [10, 20], version: " + std::to_string(version) + "}\n"));
            EXPECT_EQ(picFrame(picture), (Rect{10, 20, 51, 20 + width}));
            const auto port = std::make_shared<GrafPort>(Rect{0, 0, 41, width});
            const PortScope scope(port);
            DrawPicture(picture, port->portRect);
            Int different = 0;
            for (Int v = 0; v < 41; ++v)
                for (Int h = 0; h < width; ++h)
                    different += port->portBits.get(h, v) != bits.black(v, h);
            EXPECT_EQ(different, 0);
        }
}

TEST_F(Sources, StrikesHoldTheGlyphsOfTheBdf)
{
    put("f.bdf",
        "STARTFONT 2.1\nFONT_ASCENT 3\nFONT_DESCENT 1\nCHARSET_REGISTRY \"ISO10646\"\n"
        "STARTCHAR A\nENCODING 65\nDWIDTH 4 0\nBBX 3 2 0 0\nBITMAP\nA0\n40\nENDCHAR\n"
        "STARTCHAR eacute\nENCODING 233\nDWIDTH 3 0\nBBX 2 1 -1 -1\nBITMAP\nC0\nENDCHAR\n"
        "STARTCHAR far\nENCODING 20013\nDWIDTH 3 0\nBBX 0 0 0 0\nBITMAP\nENDCHAR\n"
        "STARTCHAR .notdef\nENCODING -1\nDWIDTH 2 0\nBBX 1 4 0 -1\nBITMAP\n80\n80\n80\n80\nENDCHAR\nENDFONT\n");
    const Bytes data = compile("NFNT:\n  1: {bdf: f.bdf, leading: 2}\n");
    const Block b(data);
    EXPECT_EQ(b.s16(2), 65);
    EXPECT_EQ(b.s16(4), 0x8E) << "e acute in Mac OS Roman";
    EXPECT_EQ(b.s16(8), -1) << "the furthest reach to the left";
    EXPECT_EQ(b.s16(14), 4);
    EXPECT_EQ(b.s16(18), 3);
    EXPECT_EQ(b.s16(20), 1);
    EXPECT_EQ(b.s16(22), 2);
    ASSERT_EQ(b.s16(24), 1);
    // Rows: A is 3 wide with its feet on the base line, e acute 2 wide below it, the box 1 wide and 4 high.
    EXPECT_EQ(hexText(std::span(data).subspan(26, 8)), "0400 a400 4400 1c00");
    const auto strike = strikeOf(data);
    ASSERT_TRUE(strike);
    const Bytes text{'A', 0x8E, 'B'};
    EXPECT_EQ(strike->width(text, false), 7);
    EXPECT_EQ(strike->width(text, true), 9);
    EXPECT_FALSE(strike->has('B'));
    const Int table = 16 + 2 * b.u16(16), last = 0x8E - 65;
    EXPECT_EQ(b.u16(table), 0x0104);
    EXPECT_EQ(b.u16(table + 2), 0xFFFF);
    EXPECT_EQ(b.u16(table + 2 * last), 0x0003);
    EXPECT_EQ(b.u16(table + 2 * (last + 1)), 0x0102) << "the missing glyph";
    EXPECT_EQ(b.count(), table + 2 * (last + 3));
}

TEST_F(Sources, WavFilesBecomeUnsignedSamples)
{
    const auto wave = [](int channels, int bits, const std::string& samples) {
        std::string out = "RIFF----WAVEfmt ";
        const auto little = [&](unsigned value, int bytes) {
            for (int i = 0; i < bytes; ++i)
                out += static_cast<char>(value >> 8 * i);
        };
        little(16, 4), little(1, 2), little(unsigned(channels), 2), little(22050, 4), little(0, 4), little(0, 2),
            little(unsigned(bits), 2);
        out += "junk";
        little(3, 4);
        out += std::string("abc\0", 4) + "data";
        little(unsigned(samples.size()), 4);
        return out + samples;
    };
    const struct {
        int channels, bits;
        std::string in;
        const char* samples;
    } kCases[] = {
        {1, 8, std::string("\x00\x80\xFF", 3), "0080 ff"},
        {1, 16, std::string("\x00\x80\x00\x00\xFF\x7F\x80\x00\x7F\x00", 10), "0080 ff81 80"},
        {2, 16, std::string("\x00\x40\x00\xC0\x00\x40\x00\x40", 8), "80c0"},
    };
    for (const auto& test : kCases) {
        put("s.wav", wave(test.channels, test.bits, test.in));
        const Bytes data = compile("snd:\n  1: {wav: s.wav}\n");
        const Block b(data);
        EXPECT_EQ(b.u32(24), b.count() - 42);
        EXPECT_EQ(b.u32(28), I(22050) << 16);
        EXPECT_EQ(hexText(std::span(data).subspan(42)), test.samples);
    }
}
