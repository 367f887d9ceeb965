#include "MacToolbox/App/Governor.h"
#include "Wainroad/Game/Wainroad.h"

int main()
{
    MacToolbox::Governor::installAtStart();
    Wainroad::Wainroad_main();
}
