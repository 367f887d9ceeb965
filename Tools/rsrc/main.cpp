#include "Tools/rsrc/Build.h"
#include "Tools/rsrc/Check.h"
#include "Tools/rsrc/Forms.h"
#include "Tools/rsrc/Sheet.h"

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"

#include <charconv>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>

using namespace Rsrc;

namespace {

constexpr char kUsage[] = "usage: rsrc build [--keep-going] SOURCES OUT\n"
                          "       rsrc list FILE\n"
                          "       rsrc show FILE TYPE ID\n"
                          "       rsrc png FILE TYPE ID OUT [FRAME]\n"
                          "       rsrc sheet FILE TYPE OUT\n"
                          "       rsrc check FILE...\n";

int complain(const std::string& text)
{
    std::cerr << text << '\n';
    return 1;
}

int build(const std::string& sources, const std::string& out, bool keepGoing)
{
    std::vector<std::string> faults;
    const Archive archive = compileFolder(sources, faults);
    for (const std::string& fault : faults)
        std::cerr << fault << '\n';
    if (!faults.empty() && !keepGoing)
        return complain(std::to_string(faults.size()) + " faults; nothing is written");
    return archive.write(out) ? 0 : complain(out + ": cannot be written");
}

std::unique_ptr<ResourceFile> openFile(const std::string& path)
{
    auto file = ResourceFile::read(path, 0);
    if (!file)
        complain(path + ": cannot be read");
    return file;
}

int list(const std::string& path)
{
    const auto file = openFile(path);
    if (!file)
        return 1;
    for (const ResourceFile::Entry& entry : file->entries)
        std::cout << typeName(entry.type) << '\t' << entry.id << '\t' << entry.data.size()
                  << (entry.named ? '\t' + fromMacRoman(entry.name) : "") << '\n';
    return 0;
}

/// The entry that the arguments name, with a word on what is wrong.
const ResourceFile::Entry* findEntry(const ResourceFile& file, const std::string& type, const std::string& id)
{
    Int number = 0;
    const auto [end, error] = std::from_chars(id.data(), id.data() + id.size(), number);
    const std::optional<OSType> code = typeOf(type);
    const ResourceFile::Entry* entry =
        code && error == std::errc() && end == id.data() + id.size() ? file.find(*code, number) : nullptr;
    if (!entry)
        complain(file.path + ": no " + type + ' ' + id);
    return entry;
}

int show(const std::string& path, const std::string& type, const std::string& id)
{
    const auto file = openFile(path);
    const ResourceFile::Entry* entry = file ? findEntry(*file, type, id) : nullptr;
    if (!entry)
        return 1;
    const Form* form = findForm(entry->type);
    const auto text = form ? form->show(entry->id, entry->data) : std::nullopt;
    std::cout << typeName(entry->type) << ":\n  " << entry->id << ':';
    if (text)
        std::cout << *text << '\n';
    else
        std::cout << " {hex: \"" << hexText(entry->data) << "\"}\n";
    return 0;
}

int png(const std::string& path, const std::string& type, const std::string& id, const std::string& out,
    const char* frameText)
{
    const auto file = openFile(path);
    const ResourceFile::Entry* entry = file ? findEntry(*file, type, id) : nullptr;
    if (!entry)
        return 1;
    std::optional<Bits> bits;
    if (frameText) {
        const auto frames = imageFrames(entry->data);
        const std::size_t frame = static_cast<std::size_t>(std::max(0, std::atoi(frameText)));
        if (entry->type == os("Imag") && frames && frame < frames->size())
            bits = (*frames)[frame].bits;
    } else if (const Form* form = findForm(entry->type); form && form->picture) {
        bits = form->picture(entry->data);
    }
    if (!bits || bits->height == 0 || bits->width == 0)
        return complain(type + ' ' + id + " has no picture");
    return writePng(out, *bits) ? 0 : complain(out + ": cannot be written");
}

/// All pictures of one type on one sheet. A resource without a picture is named and left out.
int sheet(const std::string& path, const std::string& type, const std::string& out)
{
    const std::optional<OSType> code = typeOf(type);
    const Form* form = code ? findForm(*code) : nullptr;
    if (!form || !form->picture)
        return complain("resources of type " + type + " have no picture");
    const auto file = openFile(path);
    if (!file)
        return 1;
    std::vector<SheetPicture> pictures;
    for (const ResourceFile::Entry& entry : file->entries) {
        if (entry.type != *code)
            continue;
        const auto more = sheetPictures(entry.type, entry.id, entry.data);
        if (more.empty())
            complain(type + ' ' + std::to_string(entry.id) + " has no picture");
        pictures.insert(pictures.end(), more.begin(), more.end());
    }
    if (pictures.empty())
        return complain(path + ": no pictures of type " + type);
    const Bits all = contactSheet(pictures);
    if (all.height == 0)
        return complain(path + ": the pictures are too large for one sheet");
    return writePng(out, all) ? 0 : complain(out + ": cannot be written");
}

int checkFiles(const std::vector<std::string>& paths)
{
    Stock stock;
    Findings all;
    for (const std::string& path : paths) {
        std::ifstream in(path, std::ios::binary);
        const Bytes image{std::istreambuf_iterator<char>(in), {}};
        if (!in && image.empty())
            return complain(path + ": cannot be read");
        stock.add(path, image, all);
    }
    const Findings found = check(stock);
    all.faults.insert(all.faults.end(), found.faults.begin(), found.faults.end());
    for (const std::string& fault : all.faults)
        std::cout << fault << '\n';
    for (const std::string& note : found.notes)
        std::cout << "note: " << note << '\n';
    std::cout << all.faults.size() << " faults, " << found.notes.size() << " notes\n";
    return all.faults.empty() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> args(argv + 1, argv + argc);
    const std::string command = args.empty() ? "" : args[0];
    if (command == "build" && args.size() == 4 && args[1] == "--keep-going")
        return build(args[2], args[3], true);
    if (command == "build" && args.size() == 3)
        return build(args[1], args[2], false);
    if (command == "list" && args.size() == 2)
        return list(args[1]);
    if (command == "show" && args.size() == 4)
        return show(args[1], args[2], args[3]);
    if (command == "png" && (args.size() == 5 || args.size() == 6))
        return png(args[1], args[2], args[3], args[4], args.size() == 6 ? argv[6] : nullptr);
    if (command == "sheet" && args.size() == 4)
        return sheet(args[1], args[2], args[3]);
    if (command == "check" && args.size() >= 2)
        return checkFiles({args.begin() + 1, args.end()});
    std::cerr << kUsage;
    return 2;
}
