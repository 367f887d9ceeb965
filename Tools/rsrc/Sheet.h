#pragma once

#include "Tools/rsrc/Bits.h"

#include <string>
#include <vector>

namespace Rsrc {

/// A picture on a contact sheet, and what stands under it: digits, "-" and ":"; other characters are left blank.
struct SheetPicture {
    std::string caption;
    Bits bits;
    bool startsRow = false; ///< begins a row of its own
};

/// All pictures in rows, in their order, each in a dotted frame one pixel outside it. The sheet is up to 1000 wide, or
/// as wide as its widest picture. No pictures give an empty sheet, and so do pictures that would make one of more than
/// 256 million pixels.
Bits contactSheet(const std::vector<SheetPicture>& pictures);

/// The pictures of one resource: the frames of an `Imag`, the specimen of a strike, else the one that its form shows.
/// A resource without a picture or with damaged bytes gives none.
std::vector<SheetPicture> sheetPictures(OSType type, Int id, const Bytes& data);

/// Every character of a strike in rows of 16 codes, and under them lines of text, plain and bold as the Toolbox makes
/// it. Damaged bytes, and glyphs of more than 256 pixels a side, give an empty picture.
Bits specimen(const Bytes& strike);

} // namespace Rsrc
