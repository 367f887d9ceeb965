#include "Tools/rsrc/Forms.h"

#include "MacToolbox/Base/Strings.h"

namespace Rsrc {

namespace {

// The settings of a new player.

constexpr Int kMostLegends = 10, kLegendName = 27;
constexpr Int kSettingsSize = 1108, kSpareBytes = 141;

void putText(ByteWriter& out, const Source& entry, const char* key, Int field)
{
    const Bytes text = entry.counted(key, static_cast<std::size_t>(field - 1));
    out.raw(text);
    out.zeros(field - I(text.size()));
}

void putLegends(ByteWriter& out, const Source& entry, const char* key)
{
    const std::optional<Source> list = entry.find(key);
    const std::vector<Source> legends = list ? list->list() : std::vector<Source>{};
    if (I(legends.size()) > kMostLegends)
        list->fail("there is room for 10 legends");
    out.u16(I(legends.size()));
    out.u16(kMostLegends);
    out.u16(0);
    for (const Source& legend : legends) {
        legend.allow({"name", "points"});
        putText(out, legend, "name", kLegendName + 1);
        out.u32(legend.at("points").number(0, INT32_MAX));
    }
    out.zeros((kMostLegends - I(legends.size())) * 32);
}

Bytes compileSettings(const Source& entry, Int)
{
    entry.allow({"version", "signature", "hint", "password", "mode", "speed", "huntTime", "opt248", "opt244", "opt245",
        "opt246", "legends", "trainLegends"});
    ByteWriter out;
    out.u32(os("QUIL"));
    out.u16(entry.number("version", -32768, 1, 1));
    putText(out, entry, "signature", 32);
    putText(out, entry, "hint", 256);
    putText(out, entry, "password", 11);
    out.u8(0);
    out.u16(entry.number("mode", -32768, 32767, 0));
    out.u8(0);
    out.u8(entry.at("speed").number(0, 255));
    out.u8(entry.at("huntTime").number(0, 255));
    out.zeros(kSpareBytes);
    for (const char* key : {"opt248", "opt244", "opt245", "opt246"})
        out.u8(entry.number(key, 0, 255, 0));
    putLegends(out, entry, "legends");
    putLegends(out, entry, "trainLegends");
    return out.bytes;
}

std::string showLegends(const Block& b, Int at)
{
    std::string out;
    const Int count = std::clamp<Int>(b.s16(at), 0, kMostLegends);
    for (Int i = 0; i < count; ++i) {
        const Int entry = at + 6 + 32 * i;
        out += "\n      - {name: " + quoted(characters(b.pstr(entry)))
            + ", points: " + std::to_string(b.s32(entry + 28)) + '}';
    }
    return out.empty() ? " []" : out;
}

std::optional<std::string> showSettings(Int, const Bytes& data)
{
    if (I(data.size()) != kSettingsSize)
        return std::nullopt;
    const Block b(data);
    const auto line = [](const char* key, const std::string& value) {
        return std::string("\n    ") + key + ": " + value;
    };
    const auto text = [&](Int at) { return quoted(characters(b.pstr(at))); };
    std::string out = line("version", std::to_string(b.s16(4))) + line("signature", text(6)) + line("hint", text(38))
        + line("password", text(294));
    out += line("mode", std::to_string(b.s16(306))) + line("speed", std::to_string(b.u8(309)))
        + line("huntTime", std::to_string(b.u8(310)));
    Int at = 452;
    for (const char* key : {"opt248", "opt244", "opt245", "opt246"})
        out += line(key, std::to_string(b.u8(at++)));
    return out + "\n    legends:" + showLegends(b, 456) + "\n    trainLegends:" + showLegends(b, 782);
}

// Steps of the trail.

void putDots(ByteWriter& out, const Source& list)
{
    for (const Source& dot : list.list()) {
        const std::vector<Source> numbers = dot.list();
        if (numbers.size() != 2 && numbers.size() != 3)
            dot.fail("a dot is [right, down] or [right, down, how many]");
        const Int h = numbers[0].number(-128, 127), v = numbers[1].number(-128, 127);
        for (Int n = numbers.size() == 3 ? numbers[2].number(1, 1000) : 1; n > 0; --n)
            out.u8(h), out.u8(v);
    }
}

Bytes compileDots(const Source& entry, Int)
{
    entry.allow({"title", "dots", "legs"});
    ByteWriter out;
    if (const auto legs = entry.find("legs"))
        for (const Source& leg : legs->list())
            putDots(out, leg);
    else
        putDots(out, entry.at("dots"));
    return out.bytes;
}

std::optional<std::string> showDots(Int, const Bytes& data)
{
    if (data.size() % 2 != 0)
        return std::nullopt;
    std::string out = "\n    dots: [";
    const Block b(data);
    for (Int i = 0; i < b.count(); i += 2)
        out += (i > 0 ? ", [" : "[") + std::to_string(b.s8(i)) + ", " + std::to_string(b.s8(i + 1)) + ']';
    return out + ']';
}

// Version.

Bytes compileVersion(const Source& entry, Int)
{
    entry.allow({"number", "region", "text", "long"});
    ByteWriter out;
    const std::vector<Source> number = entry.at("number").list();
    if (number.size() != 4)
        entry.at("number").fail("a version number has four bytes");
    for (const Source& byte : number)
        out.u8(byte.number(0, 255));
    out.u16(entry.number("region", -32768, 32767, 0));
    out.raw(entry.at("text").counted());
    out.raw(entry.find("long") ? entry.at("long").counted() : entry.at("text").counted());
    return out.bytes;
}

std::optional<std::string> showVersion(Int, const Bytes& data)
{
    const Block b(data);
    if (b.count() < 8 || b.count() < 8 + b.u8(6) || b.count() != 8 + b.u8(6) + b.u8(7 + b.u8(6)))
        return std::nullopt;
    std::string out = " {number: [";
    for (Int i = 0; i < 4; ++i)
        out += (i > 0 ? ", " : "") + std::to_string(b.u8(i));
    return out + "], region: " + std::to_string(b.s16(4)) + ", text: " + quoted(characters(b.pstr(6)))
        + ", long: " + quoted(characters(b.pstr(7 + b.u8(6)))) + '}';
}

// Sounds.

constexpr Int kSoundHeader = 20, kSamples = 42;

struct Wave {
    Int channels = 0, rate = 0, bits = 0;
    std::span<const std::uint8_t> data;
};

Int little(std::span<const std::uint8_t> bytes, std::size_t at, std::size_t length)
{
    Int value = 0;
    for (std::size_t i = length; i-- > 0;)
        value = value << 8 | bytes[at + i];
    return value;
}

bool isTag(std::span<const std::uint8_t> bytes, std::size_t at, const char* tag)
{
    return std::equal(tag, tag + 4, bytes.begin() + std::ptrdiff_t(at));
}

Wave readWave(std::span<const std::uint8_t> file, const Source& name)
{
    if (file.size() < 12 || !isTag(file, 0, "RIFF") || !isTag(file, 8, "WAVE"))
        name.fail(name.path() + " is no WAV file");
    Wave wave;
    for (std::size_t at = 12; at + 8 <= file.size();) {
        const auto length = static_cast<std::size_t>(little(file, at + 4, 4));
        const auto chunk = file.subspan(at + 8, std::min(length, file.size() - at - 8));
        if (isTag(file, at, "fmt ") && chunk.size() >= 16) {
            const Int format = little(chunk, 0, 2);
            if (format != 1 && format != 0xFFFE)
                name.fail(name.path() + " is not plain PCM");
            wave.channels = little(chunk, 2, 2);
            wave.rate = little(chunk, 4, 4);
            wave.bits = little(chunk, 14, 2);
        } else if (isTag(file, at, "data")) {
            wave.data = chunk;
        }
        at += 8 + length + length % 2;
    }
    if ((wave.bits != 8 && wave.bits != 16) || wave.channels < 1 || wave.channels > 2 || wave.rate < 1
        || wave.rate > 65535)
        name.fail(name.path() + " has to have 8 or 16 bits, one channel or two, and at most 65535 Hz");
    return wave;
}

Bytes compileSound(const Source& entry, Int)
{
    if (entry.isMap())
        entry.allow({"wav"});
    const Source name = entry.isScalar() ? entry : entry.at("wav");
    const Bytes file = fileContents(name.path(), name);
    const Wave wave = readWave(file, name);
    const std::size_t sampleBytes = static_cast<std::size_t>(wave.bits / 8),
                      frameBytes = sampleBytes * static_cast<std::size_t>(wave.channels);
    ByteWriter samples;
    for (std::size_t at = 0; at + frameBytes <= wave.data.size(); at += frameBytes) {
        Int sum = 0;
        for (Int c = 0; c < wave.channels; ++c) {
            const Int raw = little(wave.data, at + static_cast<std::size_t>(c) * sampleBytes, sampleBytes);
            sum += wave.bits == 8 ? (raw - 128) * 256 : static_cast<std::int16_t>(raw);
        }
        samples.u8(128 + std::clamp<Int>((sum / wave.channels + 128) >> 8, -128, 127));
    }
    ByteWriter out;
    out.u16(1); // format
    out.u16(1); // one data type: sampled sound
    out.u16(5);
    out.u32(0);
    out.u16(1); // one command: play the header at the offset
    out.u16(0x8051);
    out.u16(0);
    out.u32(kSoundHeader);
    out.u32(0);
    out.u32(I(samples.bytes.size()));
    out.u32(wave.rate << 16);
    out.zeros(8); // no loop
    out.u8(0);    // standard encoding
    out.u8(60);   // middle C
    out.raw(samples.bytes);
    return out.bytes;
}

std::optional<std::string> showSound(Int id, const Bytes& data)
{
    const Block b(data);
    if (b.count() < kSamples || b.u16(0) != 1 || b.u16(12) != 0x8051 || b.u32(16) != kSoundHeader)
        return std::nullopt;
    return " {wav: snd" + std::to_string(id) + ".wav} # " + std::to_string(b.u32(24)) + " samples at "
        + std::to_string(b.u16(28)) + " Hz";
}

/// The wave: in each column the lowest and the highest of 64 samples, a dotted line at silence, and below it a mark
/// every tenth of a second, a longer one every second.
std::optional<Bits> pictureOfSound(const Bytes& data)
{
    constexpr Int kColumn = 64, kHeight = 128, kRuler = 8, kTenth = 3;
    const Block b(data);
    const Int count = std::min(b.u32(24), b.count() - kSamples), rate = b.u16(28);
    if (!showSound(0, data) || count < 1 || rate < 10)
        return std::nullopt;
    Bits wave(kHeight + kRuler, (count + kColumn - 1) / kColumn);
    for (Int h = 0; h < wave.width; ++h) {
        const auto first = data.begin() + kSamples + h * kColumn;
        const auto [low, high] = std::minmax_element(first, first + std::min(kColumn, count - h * kColumn));
        for (Int v = (255 - *high) / 2; v <= (255 - *low) / 2; ++v)
            wave.set(v, h);
        if (h % 4 == 0)
            wave.set(kHeight / 2 - 1, h);
    }
    for (Int tenth = 0; tenth * rate / 10 < count; ++tenth)
        for (Int v = 0; v < (tenth % 10 == 0 ? kRuler : kTenth); ++v)
            wave.set(kHeight + v, tenth * rate / 10 / kColumn);
    return wave;
}

} // namespace

std::vector<Form> settingForms()
{
    return {{"CONF", compileSettings, showSettings}, {"HVof", compileDots, showDots},
        {"vers", compileVersion, showVersion}, {"snd ", compileSound, showSound, pictureOfSound}};
}

} // namespace Rsrc
