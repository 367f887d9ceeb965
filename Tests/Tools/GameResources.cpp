#include "Tests/Tools/GameResources.h"

#include "MacToolbox/Base/Strings.h"
#include "Tools/rsrc/Build.h"

#include <gtest/gtest.h>

using namespace Rsrc;

const Archive& gameResources()
{
    static const Archive all = [] {
        std::vector<std::string> faults;
        Archive archive = compileFolder(WR_RESOURCES "/System", faults);
        Archive rest = compileFolder(WR_RESOURCES "/Wainroad", faults);
        archive.items.merge(rest.items);
        for (const std::string& fault : faults)
            ADD_FAILURE() << fault;
        return archive;
    }();
    return all;
}

const Bytes& gameResource(const char* type, Int id)
{
    static const Bytes kNone;
    const auto it = gameResources().items.find({os(type), id});
    if (it != gameResources().items.end())
        return it->second.data;
    ADD_FAILURE() << type << ' ' << id << " is missing";
    return kNone;
}
