#include "Tools/rsrc/Check.h"

#include "MacToolbox/Data/Resources.h"
#include "Tools/rsrc/Expectations.h"
#include "Tools/rsrc/Forms.h"

namespace Rsrc {

void Findings::fault(const char* type, Int id, const std::string& text)
{
    faults.push_back(typeName(os(type)) + ' ' + std::to_string(id) + ": " + text);
}

void Findings::note(const char* type, Int id, const std::string& text)
{
    notes.push_back(typeName(os(type)) + ' ' + std::to_string(id) + ": " + text);
}

void Stock::add(const std::string& path, const Bytes& image, Findings& findings)
{
    for (ResourceFile::Entry& entry : ResourceFile::parse(image)) {
        Archive::Item item{std::move(entry.data), std::nullopt, path};
        const auto [at, fresh] = all_.items.emplace(std::pair(entry.type, entry.id), std::move(item));
        if (!fresh)
            findings.fault(
                osString(entry.type).c_str(), entry.id, "stands in " + at->second.place + " and again in " + path);
    }
}

const Bytes* Stock::find(const char* type, Int id) const
{
    const auto it = all_.items.find({os(type), id});
    return it == all_.items.end() ? nullptr : &it->second.data;
}

std::vector<Int> Stock::ids(const char* type) const
{
    std::vector<Int> found;
    for (const auto& [key, item] : all_.items)
        if (key.first == os(type))
            found.push_back(key.second);
    return found;
}

std::string Stock::fileOf(const char* type, Int id) const
{
    const auto it = all_.items.find({os(type), id});
    return it == all_.items.end() ? std::string() : it->second.place;
}

void checkInventory(const Stock& stock, Findings& findings)
{
    const auto want = [&](const char* type, Int id) {
        if (!stock.find(type, id))
            findings.fault(type, id, "is missing");
    };
    for (const ResourceNeeds& need : resourceNeeds())
        for (Int id = need.first; id <= need.last; ++id)
            want(need.type, id);
    for (const PanelNeeds& need : panelNeeds())
        want("DITL", need.id);
    for (const DialogNeeds& need : dialogNeeds())
        want("DITL", need.id);
    for (const ListNeeds& need : listNeeds())
        want("STR#", need.id);
    for (const ImageNeeds& need : imageNeeds())
        want("Imag", need.id);
    if (const std::string file = stock.fileOf("vers", 1); !file.empty() && file != stock.fileOf("WIND", 1000))
        findings.fault("vers", 1, "has to lie in the file of the game");
}

Findings check(const Stock& stock)
{
    Findings findings;
    for (const auto room : {checkInventory, checkLayouts, checkMenus, checkTexts, checkImages, checkScripts, checkFonts,
             checkFit, checkSettings})
        room(stock, findings);
    return findings;
}

} // namespace Rsrc
