#include "Wainroad/Simulation/Random.h"

#include "MacToolbox/QuickDraw/CopyBits.h"

#include <cstdlib>

namespace Wainroad {

Int RandomN(Int n)
{
    if (n == 0)
        return 0;
    const Int drawn = Random();
    return n == 2 ? drawn & 1 : std::abs(drawn) % n;
}

} // namespace Wainroad
