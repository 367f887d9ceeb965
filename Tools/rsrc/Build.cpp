#include "Tools/rsrc/Build.h"

#include "Tools/rsrc/Forms.h"

#include <algorithm>
#include <filesystem>

namespace Rsrc {

namespace {

/// The bytes of an entry that gives them as they are, or nothing.
std::optional<Bytes> rawBytes(const Source& entry)
{
    if (!entry.isMap())
        return std::nullopt;
    if (const auto file = entry.find("file")) {
        entry.allow({"file"});
        return fileContents(file->path(), *file);
    }
    const auto hex = entry.find("hex");
    if (!hex)
        return std::nullopt;
    entry.allow({"hex"});
    Bytes bytes;
    std::string digits;
    for (const char c : hex->word())
        if (c != ' ' && c != '\n')
            digits += c;
    if (digits.size() % 2 != 0 || digits.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
        hex->fail("hex is pairs of hexadecimal digits");
    for (std::size_t i = 0; i < digits.size(); i += 2)
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    return bytes;
}

constexpr std::size_t kMostData = 1U << 24; // the offsets of the form have 24 bits

void compileEntry(Archive& archive, const Form* form, OSType type, const Source::Entry& entry)
{
    const Int id = entry.key.number(-32768, 32767);
    const std::optional<Bytes> raw = rawBytes(entry.value);
    if (!raw && !form)
        entry.key.fail(typeName(type) + " has no form of its own: give its bytes as hex or file");
    Archive::Item item{raw ? *raw : form->compile(entry.value, id), std::nullopt, entry.key.place()};
    if (item.data.size() >= kMostData)
        entry.key.fail("the resource is too long");
    if (const auto name = entry.value.find("name"))
        item.name = name->roman(255);
    const auto [at, fresh] = archive.items.emplace(std::pair(type, id), std::move(item));
    if (!fresh)
        entry.key.fail(typeName(type) + ' ' + std::to_string(id) + " stands already at " + at->second.place);
}

void compileFile(Archive& archive, const std::string& path, std::vector<std::string>& faults)
{
    const auto guarded = [&](const auto& work) {
        try {
            work();
        } catch (const Fault& fault) {
            faults.emplace_back(fault.what());
        }
    };
    guarded([&] {
        for (const Source::Entry& section : Source::load(path).map())
            guarded([&] {
                const std::optional<OSType> type = typeOf(section.key.word());
                if (!type)
                    section.key.fail("a type has up to four characters");
                for (const Source::Entry& entry : section.value.map())
                    guarded([&] { compileEntry(archive, findForm(*type), *type, entry); });
            });
    });
}

} // namespace

Archive compileFolder(const std::string& folder, std::vector<std::string>& faults)
{
    std::vector<std::string> files;
    std::error_code error;
    for (std::filesystem::recursive_directory_iterator it(folder, error), end; !error && it != end; it.increment(error))
        if (it->path().extension() == ".yaml")
            files.push_back(it->path().string());
    if (error)
        faults.push_back(folder + ": cannot be read");
    std::sort(files.begin(), files.end());
    Archive archive;
    for (const std::string& file : files)
        compileFile(archive, file, faults);
    std::size_t total = 0;
    for (const auto& [key, item] : archive.items)
        total += 4 + item.data.size();
    if (total >= kMostData)
        faults.push_back(folder + ": more than 16 MB of data");
    return archive;
}

} // namespace Rsrc
