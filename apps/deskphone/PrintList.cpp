#include "PrintList.h"

#include "ScreenRow.h"
#include "ScreenText.h"
#include "Telephone.h"
#include "host/Clock.h"

namespace Deskphone
{
void printList(std::ostream& stream, Telephone& telephone, const Options& options, std::size_t line)
{
    const std::vector<ScreenRow> rows = screenRows(telephone);
    if (options.json)
    {
        printJson(stream, line, rows, options.withIds);
    }
    else
    {
        printScreen(stream, telephone.times().formatFromUTCToFullDate(Host::currentTime(nullptr)), rows,
                    options.withIds);
    }
}
} // namespace Deskphone
