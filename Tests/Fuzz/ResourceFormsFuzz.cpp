// What `rsrc show`, `rsrc png`, `rsrc sheet` and `rsrc check` do with resources of any contents. The first byte chooses
// a form; all bytes are also read as a whole resource file.

#include "Tools/rsrc/Check.h"
#include "Tools/rsrc/Forms.h"
#include "Tools/rsrc/Sheet.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace Rsrc;
    if (size == 0)
        return 0;
    const Form& form = forms()[data[0] % forms().size()];
    const Bytes bytes(data + 1, data + size);
    form.show(1, bytes);
    if (form.picture) {
        form.picture(bytes);
        contactSheet(sheetPictures(os(form.type), 1, bytes));
    }
    Findings findings;
    Stock stock;
    stock.add("fuzz", Bytes(data, data + size), findings);
    check(stock);
    return 0;
}
