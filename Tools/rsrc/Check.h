#pragma once

#include "Tools/rsrc/Archive.h"
#include "Tools/rsrc/Forms.h"

#include <string>
#include <vector>

namespace Rsrc {

/// What a check has found.
struct Findings {
    std::vector<std::string> faults; ///< what breaks a screen or an expectation of the game
    std::vector<std::string> notes;  ///< what only looks wrong

    /// "TYPE id: text".
    void fault(const char* type, Int id, const std::string& text);
    void note(const char* type, Int id, const std::string& text);
};

/// The resources of all files together, as the game finds them.
class Stock {
public:
    /// Adds a file that is opened after those before; a second resource of the same type and id is a fault.
    void add(const std::string& path, const Bytes& image, Findings& findings);

    const Bytes* find(const char* type, Int id) const;
    std::vector<Int> ids(const char* type) const;
    /// The path of the file that holds it; empty if none does.
    std::string fileOf(const char* type, Int id) const;

private:
    Archive all_; // `place` is the path of the file
};

/// The strike of a family at a size without style, as its `FOND` or the number of a `FONT` names it; or nothing.
std::optional<Strike> plainStrike(const Stock& stock, Int family, Int size);

/// Tests resources against everything that the game expects of them.
Findings check(const Stock& stock);

// The rooms of the check.
void checkInventory(const Stock& stock, Findings& findings);
void checkLayouts(const Stock& stock, Findings& findings);
void checkMenus(const Stock& stock, Findings& findings);
void checkTexts(const Stock& stock, Findings& findings);
void checkImages(const Stock& stock, Findings& findings);
void checkScripts(const Stock& stock, Findings& findings);
void checkFonts(const Stock& stock, Findings& findings);
void checkFit(const Stock& stock, Findings& findings);
void checkSettings(const Stock& stock, Findings& findings);

} // namespace Rsrc
