#pragma once

// What saving, loading and export share: opening with patience, and writing whole blocks.

#include "MacToolbox/Data/Files.h"

namespace Wainroad {
using namespace MacToolbox;

/// Opens a file for reading and writing. A busy one is tried ten times, half a second to a second apart. A failure is
/// told of. @return noErr or the error; `ref` is -1 where nothing was opened.
OSErr OpenPatiently(Int vRefNum, Int dirID, const Str255& name, Int& ref);
/// Where a block begins: at the mark, or at the start of the file.
enum class BlockAt : Int { mark = 0, start = 1 };
/// Writes a block. A short write is an error. Tells nobody.
OSErr WriteBlock(Int ref, const Handle& block, Int count, BlockAt at);
/// Reads a block. A file that ends before it does gives eofErr. Tells nobody.
OSErr ReadBlock(Int ref, const Handle& block, Int count, BlockAt at);
/// Shows text 17 of `STR#` 3000, that the disk takes no more, in the middle. `Fatal` with "GetAlert" if the alert is
/// missing.
void TellDiskIsFull();

} // namespace Wainroad
