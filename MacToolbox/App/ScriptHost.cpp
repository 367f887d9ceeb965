#include "MacToolbox/App/ScriptHost.h"

#include "MacToolbox/App/Png.h"
#include "MacToolbox/Base/Platform.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Files.h"
#include "MacToolbox/Host/Input.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/QuickDraw/Screen.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <utility>

#include <unistd.h>

namespace MacToolbox {

namespace {

constexpr Nanos kMillisecond = 1'000'000;
constexpr Nanos kClickHeld = 80 * kMillisecond, kAfterClick = 100 * kMillisecond, kAfterCharacter = 50 * kMillisecond,
                kAfterKey = 100 * kMillisecond, kBeforeShot = 100 * kMillisecond, kAfterMenu = 200 * kMillisecond;
constexpr double kLongestWait = 1e9;             // seconds
constexpr Int kFarthest = 0x7FFFFFFF;            // of a coordinate
constexpr std::size_t kArguments = 5;            // where those of `type` and `file` begin
constexpr std::size_t kLongestScript = 64 << 20; // bytes

constexpr struct {
    std::string_view name;
    Int character, keyCode;
} kNamedKeys[] = {
    {"return", 13, 0x24},
    {"enter", 3, 0x4C},
    {"tab", 9, 0x30},
    {"esc", 27, 0x35},
    {"backspace", 8, 0x33},
    {"left", 28, 0x7B},
    {"right", 29, 0x7C},
    {"up", 30, 0x7E},
    {"down", 31, 0x7D},
    {"space", 32, 0x31},
};

/// The scalar at `at` of valid or invalid UTF-8, with its length in bytes; a length of 0 says that it is invalid.
struct Scalar {
    char32_t value = 0;
    std::size_t length = 0;
};
Scalar scalarAt(std::string_view text, std::size_t at)
{
    const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
    const unsigned first = byte(at);
    const std::size_t length = first < 0x80 ? 1 : first >> 5 == 6 ? 2 : first >> 4 == 14 ? 3 : first >> 3 == 30 ? 4 : 0;
    char32_t value = length < 2 ? first : first & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if (byte(at + i) >> 6 != 2)
            return {};
        value = value << 6 | (byte(at + i) & 0x3F);
    }
    constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool wrong = value < kLeast[length] || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF);
    return {value, wrong ? 0 : length};
}

bool isUTF8(std::string_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        const Scalar scalar = scalarAt(text, at);
        if (scalar.length == 0)
            return false;
        at += scalar.length;
    }
    return true;
}

bool isSpace(char32_t c)
{
    return c == '\t' || c == ' ' || c == 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) || c == 0x202F
        || c == 0x205F || c == 0x3000;
}

/// Without tabs and space separators at both ends.
std::string_view trim(std::string_view text)
{
    std::size_t begin = 0;
    for (Scalar s; begin < text.size() && (s = scalarAt(text, begin)).length > 0 && isSpace(s.value);)
        begin += s.length;
    text.remove_prefix(begin);
    while (!text.empty()) {
        std::size_t last = text.size() - 1;
        while (last > 0 && (static_cast<unsigned char>(text[last]) & 0xC0) == 0x80)
            --last;
        const Scalar scalar = scalarAt(text, last);
        if (scalar.length != text.size() - last || !isSpace(scalar.value))
            break;
        text = text.substr(0, last);
    }
    return text;
}

/// The pieces between spaces; empty ones are left out.
std::vector<std::string_view> split(std::string_view line)
{
    std::vector<std::string_view> words;
    while (!line.empty()) {
        const auto end = std::min(line.find(' '), line.size());
        if (end > 0)
            words.push_back(line.substr(0, end));
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    return words;
}

/// A number with an optional sign, which `from_chars` knows only in part.
template <typename Number> std::optional<Number> parse(std::string_view word)
{
    const bool negative = word.starts_with('-');
    if (negative || word.starts_with('+'))
        word.remove_prefix(1);
    if (word.empty() || word[0] == '-')
        return std::nullopt;
    Number value{};
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size())
        return std::nullopt;
    return negative ? -value : value;
}

/// A decimal integer; 0 for a word that is none or does not fit.
Int integer(std::string_view word) { return std::clamp(parse<Int>(word).value_or(0), -kFarthest, kFarthest); }

Nanos seconds(std::string_view word)
{
    const double number = parse<double>(word).value_or(1);
    return static_cast<Nanos>(std::clamp(std::isfinite(number) ? number : 1, 0.0, kLongestWait) * kSecond);
}

Point pointAt(std::string_view h, std::string_view v)
{
    const Rect viewport = Screen::shared().sharedViewport();
    return {viewport.top + integer(v), viewport.left + integer(h)};
}

/// Moves the mouse if both numbers are there.
bool mouseTo(const std::vector<std::string_view>& words, bool down)
{
    if (words.size() < 3)
        return false;
    const Point p = pointAt(words[1], words[2]);
    Input::mouse(p.h, p.v, down);
    return true;
}

/// One key press of the first Mac OS Roman byte of `text`, if it has one.
void pressCharacter(std::string_view text, Int modifiers)
{
    if (const Bytes bytes = macRoman(text); !bytes.empty())
        Input::key(bytes[0], 0, modifiers, true);
}

void pressKey(std::string_view name)
{
    const bool command = name.starts_with("cmd-");
    if (command)
        name.remove_prefix(4);
    const Int modifiers = command ? cmdKey : 0;
    for (const auto& key : kNamedKeys)
        if (key.name == name)
            return Input::key(key.character, key.keyCode, modifiers, true);
    pressCharacter(name, modifiers);
}

bool writeFile(const std::string& path, const void* bytes, std::size_t count)
{
    std::FILE* const file = std::fopen(path.c_str(), "wbe");
    if (!file)
        return false;
    const bool written = std::fwrite(bytes, 1, count, file) == count;
    return std::fclose(file) == 0 && written;
}

void takeShot(const std::string& path)
{
    const FramePtr frame = Screen::shared().snapshot();
    if (const auto png = frame ? makePNG(*frame) : std::nullopt) {
        writeFile(path, png->data(), png->size());
        return;
    }
    std::fprintf(stderr, "shot: no picture (%lldx%lld)\n", static_cast<long long>(frame ? frame->width : 0),
        static_cast<long long>(frame ? frame->height : 0));
}

/// The whole text of a UTF-8 file, or nothing.
std::optional<std::string> readScript(const std::string& path)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rbe"), std::fclose);
    if (!file)
        return std::nullopt;
    std::string text;
    std::array<char, 1 << 16> part;
    while (const std::size_t count = std::fread(part.data(), 1, part.size(), file.get())) {
        text.append(part.data(), count);
        if (text.size() > kLongestScript)
            return std::nullopt;
    }
    if (std::ferror(file.get()) || !isUTF8(text))
        return std::nullopt;
    return text;
}

} // namespace

std::optional<Nanos> Script::step()
{
    for (;;) {
        if (typed_ < typing_.size())
            return typeNext();
        if (const auto rest = std::exchange(afterWait_, nullptr)) {
            if (const auto wait = rest())
                return wait;
            continue;
        }
        if (next_ > text_.size())
            return std::nullopt;
        const std::size_t end = std::min(text_.find('\n', next_), text_.size());
        const std::string_view line = std::string_view(text_).substr(next_, end - next_);
        next_ = end + 1;
        if (const auto wait = runLine(trim(line)))
            return wait;
    }
}

std::optional<Nanos> Script::runLine(std::string_view line)
{
    if (line.empty() || line[0] == '#')
        return std::nullopt;
    return runCommand(line, split(line));
}

/// One line; `words` holds at least the command. @return The wait that follows, if any.
std::optional<Nanos> Script::runCommand(std::string_view line, const Words& words)
{
    const std::string_view command = words[0];
    const std::string_view arguments = line.substr(std::min(kArguments, line.size()));
    if (command == "wait")
        return words.size() > 1 ? seconds(words[1]) : kSecond;
    if (command == "click")
        return words.size() < 3 ? std::nullopt : std::optional(click(words));
    if (command == "down" || command == "up") {
        mouseTo(words, command == "down");
    } else if (command == "move") {
        mouseTo(words, Input::isButtonDown());
    } else if (command == "type") {
        typing_ = arguments;
        typed_ = 0;
    } else if (command == "key") {
        pressKey(words.size() > 1 ? words[1] : "return");
        return kAfterKey;
    } else if (command == "shot") {
        return shot(words);
    } else if (command == "menu") {
        if (words.size() > 2)
            Input::menuChoice(integer(words[1]), integer(words[2]));
        return kAfterMenu;
    } else if (command == "menudump") {
        dumpMenus(words);
    } else if (command == "file") {
        HostFiles::queueScriptedFile(trim(arguments));
    } else if (command == "quit") {
        Platform::current().post([] { Platform::current().exitProcess(0); });
        next_ = text_.size() + 1;
    } else {
        std::printf("script: unknown command %.*s\n", static_cast<int>(command.size()), command.data());
        std::fflush(stdout);
    }
    return std::nullopt;
}

Nanos Script::click(const Words& words)
{
    const Point p = pointAt(words[1], words[2]);
    Input::mouse(p.h, p.v, true);
    afterWait_ = [p] {
        Input::mouse(p.h, p.v, false);
        return std::optional(kAfterClick);
    };
    return kClickHeld;
}

Nanos Script::typeNext()
{
    const std::size_t length = std::max<std::size_t>(scalarAt(typing_, typed_).length, 1);
    pressCharacter(std::string_view(typing_).substr(typed_, length), 0);
    typed_ += length;
    return kAfterCharacter;
}

Nanos Script::shot(const Words& words)
{
    afterWait_ = [file = path(words, "shot.png")]() -> std::optional<Nanos> {
        takeShot(file);
        return std::nullopt;
    };
    return kBeforeShot;
}

void Script::dumpMenus(const Words& words) const
{
    const std::string file = path(words, "menus.txt"), part = file + ".part", text = MenuBar::dump();
    if (!writeFile(part, text.data(), text.size()) || std::rename(part.c_str(), file.c_str()) != 0)
        unlink(part.c_str());
}

std::string Script::path(const Words& words, std::string_view otherwise) const
{
    const std::string_view name = words.size() > 1 ? words[1] : otherwise;
    return name.starts_with('/') ? std::string(name) : out_ + "/" + std::string(name);
}

void ScriptHost::start()
{
    Platform& platform = Platform::current();
    const auto path = platform.environment("WR_SCRIPT");
    if (!path)
        return;
    auto text = readScript(*path);
    if (!text)
        return;
    std::error_code error;
    const auto out = platform.environment("WR_OUT");
    const auto script =
        std::make_shared<Script>(std::move(*text), out ? *out : std::filesystem::current_path(error).string());
    Clock::current().run(kFirstWait, [script] { return script->step(); });
}

} // namespace MacToolbox
