/** Which of a contact's telephone numbers a number is. */
#pragma once

namespace NumberType
{
enum NT
{
    NONE = 0,
    HOME = 1,
    WORK_1 = 2,
    WORK_2 = 3,
    MOBILE = 4
};
}
