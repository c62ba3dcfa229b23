/**
 * Writes what happens to a telephone into a file, as a trace of which another telephone comes to show the same.
 *
 * Each event is in the file before it is applied, so that the last line tells what a telephone died of.
 */
#pragma once

#include "Contact.h"
#include "HistoryCall.h"
#include "TelephoneSettings.h"
#include "Trace.h"

#include <fstream>
#include <stdexcept>
#include <string>

namespace Deskphone
{
/** The record cannot be written. */
class UnwritableRecord : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

class TraceRecorder
{
  public:
    /**
     * Begins a new file, in the place of one that exists; `start` is when the telephone is switched on. The time
     * zone is that of the program. Throws UnwritableRecord.
     */
    TraceRecorder(const std::string& file, const TelephoneSettings& settings, long start);

    /** An event that is about to be applied; `time` in seconds since the epoch, UTC. */
    void record(long time, const std::string& name, const Event& event);

    /** A contact that the phonebook has when the telephone is switched on. */
    void recordContact(long start, const Contact& contact);

    /** A call that the history has when the telephone is switched on. */
    void recordHistory(long start, const HistoryCall& call);

    /** The record is complete. Throws UnwritableRecord when any of it could not be written. */
    void finish();

  private:
    void write(const FieldWriter& fields);
    [[noreturn]] void fail(int error) const;

    const std::string file_;
    std::ofstream stream_;
    int error_ = 0; ///< errno of the first failure
};
} // namespace Deskphone
