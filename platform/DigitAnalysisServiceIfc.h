/**
 * The telephone's digit analysis: brings dialled and received numbers to one comparable form.
 *
 * Called on the UI thread. Implementations never change a text that is no telephone number.
 */
#pragma once

#include <string>

class DigitAnalysisServiceIfc
{
  public:
    virtual ~DigitAnalysisServiceIfc() = default;

    /** Turns `number` in place into the form in which two spellings of one number are equal. */
    virtual void convertDialString(std::string& number) = 0;

    /** Tells the service about a number seen in the journal. */
    virtual void analyseNumber(const std::string& number) = 0;
};
