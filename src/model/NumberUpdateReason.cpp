#include "ConversationAPI/NumberUpdateReason.h"

namespace ConversationAPI
{
const char* numberUpdateReasonToString(const numberUpdateReason& reason)
{
    switch (reason)
    {
    case numberUpdateReason::UPDATED:
        return "UPDATED";
    case numberUpdateReason::ADDED:
        return "ADDED";
    case numberUpdateReason::DELETED:
        return "DELETED";
    case numberUpdateReason::DUMMY:
        return "DUMMY";
    }
    return "UNKNOWN";
}
} // namespace ConversationAPI
