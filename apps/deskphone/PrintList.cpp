#include "PrintList.h"

#include "ScreenRow.h"
#include "ScreenText.h"
#include "Telephone.h"
#include "host/Clock.h"

namespace Deskphone
{
namespace
{
/** When it is and, of the cloud's list, whose it is. */
ScreenTitle titleOf(Telephone& telephone)
{
    const std::string now = telephone.times().formatFromUTCToFullDate(Host::currentTime(nullptr));
    if (telephone.shownList() == Telephone::LOCAL_LIST)
    {
        return {now, "no calls"};
    }
    const std::string user = telephone.cloudUserName();
    return {now + "  cloud" + (user.empty() ? ", nobody is signed in" : " of " + user), "no conversations"};
}
/** Below the list: what stands in the search field, and what was found. */
void printSearch(std::ostream& stream, Telephone& telephone, const Options& options)
{
    const SearchField& field = telephone.searchField();
    const std::vector<ScreenRow> rows = foundRows(telephone);
    const std::string title =
        "search \"" + field.text() + '"' + (field.isSearching() ? ", the directory is asked" : "");
    stream << '\n';
    printScreen(stream, {title, "nobody"}, rows, options.withIds);
}
} // namespace

void printList(std::ostream& stream, Telephone& telephone, const Options& options, std::size_t line)
{
    const std::vector<ScreenRow> rows = screenRows(telephone);
    if (options.json)
    {
        printJson(stream, line, rows, options.withIds);
        printFoundJson(stream, line, foundRows(telephone), options.withIds);
        return;
    }
    printScreen(stream, titleOf(telephone), rows, options.withIds);
    if (!telephone.searchField().text().empty())
    {
        printSearch(stream, telephone, options);
    }
}
} // namespace Deskphone
