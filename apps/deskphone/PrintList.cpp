#include "PrintList.h"

#include "ScreenRow.h"
#include "ScreenText.h"
#include "Telephone.h"
#include "host/Clock.h"

namespace Deskphone
{
namespace
{
/** When it is and, unless it is the local one, which list is shown; of the cloud's, whose it is. */
ScreenTitle titleOf(Telephone& telephone)
{
    const std::string now = telephone.times().formatFromUTCToFullDate(Host::currentTime(nullptr));
    if (telephone.shownList() == Telephone::LOCAL_LIST)
    {
        return {now, "no calls"};
    }
    if (telephone.shownList() == Telephone::NETWORK_LIST)
    {
        return {now + "  network", "no entries"};
    }
    const std::string user = telephone.cloudUserName();
    return {now + "  cloud" + (user.empty() ? ", nobody is signed in" : " of " + user), "no conversations"};
}
} // namespace

void printList(std::ostream& stream, Telephone& telephone, const Options& options, std::size_t line)
{
    const std::vector<ScreenRow> rows = screenRows(telephone);
    if (options.json)
    {
        printJson(stream, line, rows, options.withIds);
    }
    else
    {
        printScreen(stream, titleOf(telephone), rows, options.withIds);
    }
    if (!telephone.searchField().text().empty())
    {
        stream << (options.json ? "" : "\n");
        printFound(stream, telephone, options, line);
    }
}

void printFound(std::ostream& stream, Telephone& telephone, const Options& options, std::size_t line)
{
    const std::vector<ScreenRow> rows = foundRows(telephone);
    if (options.json)
    {
        printFoundJson(stream, line, rows, options.withIds);
        return;
    }
    const SearchField& field = telephone.searchField();
    const std::string title =
        "search \"" + field.text() + '"' + (field.isSearching() ? ", the directory is asked" : "");
    printScreen(stream, {title, "nobody"}, rows, options.withIds);
}
} // namespace Deskphone
