#include "TraceRecorder.h"

#include "ContactFields.h"
#include "FieldWriter.h"
#include "SettingsEvent.h"
#include "TimeZone.h"

#include <cerrno>
#include <cstring>

namespace Deskphone
{
TraceRecorder::TraceRecorder(const std::string& file, const TelephoneSettings& settings, long start) : file_(file)
{
    TelephoneSettings everything = settings;
    everything.timeZone = currentTimeZone();
    if (everything.timeZone.empty())
    {
        throw UnwritableRecord("cannot record: this machine does not name its time zone; give one with --timezone");
    }
    stream_.open(file, std::ios::binary); // what the file held is gone from here on
    if (!stream_)
    {
        fail(errno);
    }
    FieldWriter fields(start, SETTINGS_EVENT);
    writeSettings(fields, everything);
    write(fields);
}

void TraceRecorder::record(long time, const std::string& name, const Event& event)
{
    FieldWriter fields(time, name);
    event.write(fields);
    write(fields);
}

void TraceRecorder::recordContact(long start, const Contact& contact)
{
    FieldWriter fields(start, "contact");
    writeContact(fields, contact);
    write(fields);
}

void TraceRecorder::recordHistory(long start, const HistoryCall& call)
{
    FieldWriter fields(start, "history");
    writeHistoryCall(fields, call);
    write(fields);
}

void TraceRecorder::write(const FieldWriter& fields)
{
    stream_ << fields.line() << '\n' << std::flush;
    if (!stream_ && error_ == 0)
    {
        error_ = errno;
    }
}

void TraceRecorder::finish()
{
    stream_.close();
    if (!stream_)
    {
        fail(error_);
    }
}

void TraceRecorder::fail(int error) const
{
    throw UnwritableRecord("cannot write " + file_ + (error != 0 ? ": " + std::string(std::strerror(error)) : ""));
}
} // namespace Deskphone
