// The reader of resource files, on any bytes: it answers with resources that lie in the file.

#include "MacToolbox/Data/Resources.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace MacToolbox;
    Int total = 0;
    for (const ResourceFile::Entry& entry : ResourceFile::parse({data, size})) {
        total += I(entry.data.size());
        if (entry.id < -32768 || entry.id > 32767 || entry.name.size() > 255)
            std::abort();
    }
    if (total > 4 * I(size))
        std::abort();
    return 0;
}
