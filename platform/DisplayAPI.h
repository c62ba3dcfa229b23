/**
 * The parts of the display toolkit that the library uses: timer, command, time strings, picture.
 *
 * Everything runs on the UI thread.
 */
#pragma once

#include <memory>
#include <string>

class TranslatorIfc;

namespace DisplayAPI
{
class CommandListener;

/** How a live call reached the telephone. */
enum ForwardedCallType
{
    NOT_FORWARDED = 0,
    FORWARDED_UNCONDITIONALLY = 1,
    FORWARDED_ON_BUSY = 2,
    FORWARDED_ON_NO_REPLY = 3
};

/** Whatever can carry commands. */
class Displayable
{
  public:
    virtual ~Displayable() = default;
};

/** Something that a displayable can ask its listener to do. */
class Command
{
  public:
    explicit Command(const std::string& name);
    ~Command();

    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    const std::string& name() const;

    /** Whether the pointer names a command that has not been destroyed. */
    static bool exists(const Command* command);

  private:
    const std::string name_;
};

class CommandListener
{
  public:
    virtual ~CommandListener() = default;

    virtual void commandAction(Command* command, Displayable* source) = 0;
};

/** Asks its listener to run its command when time has passed. */
class Timer : public Displayable
{
  public:
    /** `interval` in milliseconds; -1 leaves the timer idle until start() names one. */
    explicit Timer(int interval);
    ~Timer() override;

    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    /** Not owned; must outlive the timer or be replaced. Null takes the command off. */
    void addCommand(Command* command);

    /** Not owned; null drops the listener. */
    void setCommandListener(CommandListener* listener);

    /** A single-shot timer fires once for each start(); others repeat. */
    void setSingleShot(bool singleShot);

    /** Starts anew with this interval in milliseconds. */
    void start(int interval);
    void stop();

  private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

/** Told when time strings went stale. */
class TimeStringFormatterObserver
{
  public:
    virtual ~TimeStringFormatterObserver() = default;

    /** Time has gone on: ask for the strings again and redraw. */
    virtual void timeStringsChanged() = 0;
};

/** Makes time strings for the display. Times are seconds since the epoch, UTC. */
class TimeStringFormatter
{
  public:
    virtual ~TimeStringFormatter() = default;

    virtual std::string formatFromUTC(long time) = 0;
    virtual void subscribe(TimeStringFormatterObserver* observer) = 0;
    virtual void setTranslatorIfc(TranslatorIfc* translator) = 0;
    virtual void timeFormatChanged(const std::string& format) = 0;
    virtual void dateFormatChanged(const std::string& format) = 0;
    virtual std::string formatFromUTCToFullDate(long time) = 0;
};

/** A picture, named by its file. */
class Image
{
  public:
    explicit Image(const std::string& path);

    const std::string& path() const;

  private:
    std::string path_;
};
} // namespace DisplayAPI
