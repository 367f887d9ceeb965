#include "Tools/rsrc/Forms.h"

#include "MacToolbox/Base/Strings.h"

#include <algorithm>

namespace Rsrc {

const std::vector<Form>& forms()
{
    static const std::vector<Form> all = [] {
        std::vector<Form> list;
        for (const auto& room :
            {textForms(), layoutForms(), pictureForms(), imageForms(), scriptForms(), fontForms(), settingForms()})
            list.insert(list.end(), room.begin(), room.end());
        return list;
    }();
    return all;
}

const Form* findForm(OSType type)
{
    for (const Form& form : forms())
        if (os(form.type) == type)
            return &form;
    return nullptr;
}

std::string typeName(OSType type)
{
    std::string name = osString(type);
    while (!name.empty() && name.back() == ' ')
        name.pop_back();
    return name;
}

std::optional<OSType> typeOf(const std::string& name)
{
    if (name.empty() || name.size() > 4)
        return std::nullopt;
    std::string padded = name;
    padded.resize(4, ' ');
    return os(padded);
}

bool isText(std::span<const std::uint8_t> roman) { return std::find(roman.begin(), roman.end(), '\n') == roman.end(); }

std::string quoted(std::span<const std::uint8_t> roman)
{
    constexpr char kHex[] = "0123456789abcdef";
    std::string out = "\"";
    for (const std::uint8_t c : roman) {
        if (c == '"' || c == '\\')
            out += '\\', out += static_cast<char>(c);
        else if (c == '\r')
            out += "\\r";
        else if (c < 32 || c == 127)
            out += "\\x", out += kHex[c >> 4], out += kHex[c & 15];
        else
            out += fromMacRoman(std::span(&c, 1));
    }
    return out + '"';
}

std::string shown(const Rect& r)
{
    return '[' + std::to_string(r.top) + ", " + std::to_string(r.left) + ", " + std::to_string(r.bottom) + ", "
        + std::to_string(r.right) + ']';
}

std::string hexText(std::span<const std::uint8_t> bytes)
{
    constexpr char kHex[] = "0123456789abcdef";
    std::string out;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i > 0 && i % 2 == 0)
            out += ' ';
        out += kHex[bytes[i] >> 4];
        out += kHex[bytes[i] & 15];
    }
    return out;
}

} // namespace Rsrc
