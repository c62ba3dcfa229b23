#include "Options.h"

#include "Contact.h"
#include "EventCatalogue.h"
#include "Moment.h"
#include "TimeZone.h"
#include "host/DigitAnalysis.h"
#include "host/Translator.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <cstdlib>

namespace Deskphone
{
namespace
{
constexpr const char* EXAMPLES = R"(
Examples:
  deskphone replay apps/deskphone/traces/working-day.jsonl
  deskphone replay --each apps/deskphone/traces/short.jsonl
  deskphone replay --language de --timezone Europe/Vienna day.jsonl
  deskphone replay --time-format 12HR --date-format MM/DD/YYYY day.jsonl
  zcat day.jsonl.gz | deskphone replay --json -
  deskphone replay --log 5 day.jsonl 2>day.log
  deskphone replay --timezone Asia/Tokyo --record tokyo.jsonl day.jsonl
  deskphone replay --fresh fault.jsonl
  deskphone explain --row 2 --fresh day.jsonl
  deskphone history
  deskphone history --json --data /var/lib/deskphone --at 2026-03-05T18:00:00+01:00
  deskphone mark-read --row 1
  deskphone delete --number "030 23125000"
  deskphone search --ldap host/examples/ldap.json "ann be"
  deskphone contact add --first Anna --last Berg --work "030 23125000" --mobile "0176 04069001"
  deskphone contact list
  deskphone contact change --id 5f0c0e3e2a0b4d6c8a1f7b9d3e5c1a20 --mobile ""

History and contacts are kept in the folder --data, by default $XDG_DATA_HOME/deskphone or
~/.local/share/deskphone, and are there again at the next start.

Rows: live calls first, ● talking ○ ringing ‖ on hold · ending; then the history, newest first, ! with something new:
missed calls that nobody has seen, messages in the mailbox. ← incoming, → outgoing, × missed, ↪ forwarded; the last
column counts what the row holds and what of it is new.

Exit codes: 0 all went well, 1 wrong usage, unreadable trace or unwritable record, 2 broken trace (nothing was
applied), or a contact that is not there or of whom nothing is told, or a broken phonebook (no contact was changed),
3 an event or a command asked for something that was not possible, there is no such row, or history or contacts could
not be read or stored.
)";

void check(CLI::Option* option, const std::string& what, bool (*isRight)(const std::string&))
{
    option->check([what, isRight](const std::string& value)
                  { return isRight(value) ? std::string() : "'" + value + "' is no " + what; });
}

bool isLogLevel(const std::string& text)
{
    return text.size() == 1 && text[0] >= '0' && text[0] <= '6';
}

bool isPath(const std::string& text)
{
    return !text.empty() && text != "-";
}

bool isLanguage(const std::string& text)
{
    return Host::Translator::speaks(text);
}

bool isNotEmpty(const std::string& text)
{
    return !text.empty();
}

bool isRow(const std::string& text)
{
    return isDigits(text) && text.size() <= 6 && text.find_first_not_of('0') != std::string::npos;
}

void addTrace(CLI::App& command, Options& options)
{
    command.add_option("FILE", options.trace, "The trace, one event a line; - reads standard input")
        ->type_name("")
        ->required();
}

void addSettings(CLI::App& command, Options& options)
{
    const std::string group = "Settings of the telephone (they go before those of the trace)";
    CLI::Option* zone = command.add_option("--timezone", options.timeZone, "Time zone, as Europe/Berlin");
    check(zone->type_name("ZONE")->group(group), "time zone that this machine knows", isTimeZone);
    CLI::Option* country =
        command.add_option("--country", options.country, "Where the telephone stands, ISO 3166, as DE");
    check(country->type_name("COUNTRY")->group(group), "country whose numbers are known",
          Host::DigitAnalysis::knowsRegion);
    CLI::Option* areaCode = command.add_option("--area-code", options.areaCode, "Its area code, as 030");
    check(areaCode->type_name("DIGITS")->group(group), "number", isDigits);
    CLI::Option* prefix =
        command.add_option("--outside-prefix", options.outsidePrefix, "What is dialled for an outside line, as 0");
    check(prefix->type_name("DIGITS")->group(group), "number", isDigits);
    CLI::Option* language = command.add_option("--language", options.language, "Language of the times: en, de");
    check(language->type_name("CODE")->group(group), "language that is spoken", isLanguage);
    command.add_option("--time-format", options.timeFormat, "How times of day are written")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"12HR", "24HR"}))
        ->group(group);
    command.add_option("--date-format", options.dateFormat, "How dates are written")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"DD.MM.YYYY", "MM/DD/YYYY"}))
        ->group(group);
}

void addDataFolder(CLI::App& command, Options& options)
{
    CLI::Option* data = command.add_option("--data", options.data, "Folder of the stored history and contacts");
    check(data->type_name("DIR"), "folder", isPath);
}

/** A trace may be somebody else's. */
void addDataFolderOrNone(CLI::App& command, Options& options)
{
    addDataFolder(command, options);
    command.add_flag("--fresh", options.fresh, "Begin without any history and contacts, and keep none")
        ->excludes("--data");
}

void addRow(CLI::App& command, Options& options, CLI::App& choice)
{
    CLI::Option* row = choice.add_option("--row", options.row, "The row, counted from 1 as history shows them");
    check(row->type_name("N"), "row; the first one is 1", isRow);
    CLI::Option* number =
        choice.add_option("--number", options.number, "The first row with this number, in any spelling");
    check(number->type_name("NUMBER"), "number", isNotEmpty);
    addDataFolder(command, options);
}

void addAppearance(CLI::App& command, Options& options)
{
    command.add_flag("--json", options.json, "Print one JSON object a row");
    command.add_flag("--ids", options.withIds, "Show the end of each conversation's identifier");
}

void addMoment(CLI::App& command, Options& options)
{
    command
        .add_option_function<std::string>(
            "--at", [&options](const std::string& text) { options.at = parseMoment(text); },
            "Show it as at this moment instead of now: ISO 8601 with zone, 2026-03-05T09:00:00+01:00")
        ->type_name("TIME")
        ->check(
            [](const std::string& text) {
                return parseMoment(text) ? std::string()
                                         : "'" + text + "' is no moment with a zone between 1970 and 2037";
            });
}

/** A command on the history that is stored, with no trace. */
CLI::App& addHistoryCommand(CLI::App& app, Options& options, Options::Command command, const std::string& name,
                            const std::string& description)
{
    CLI::App& added = *app.add_subcommand(name, description);
    added.callback([&options, command] { options.command = command; });
    addAppearance(added, options);
    addMoment(added, options);
    addSettings(added, options);
    return added;
}

void addHistoryCommands(CLI::App& app, Options& options)
{
    addDataFolder(addHistoryCommand(app, options, Options::HISTORY, "history",
                                    "Print the conversation list of the stored history"),
                  options);

    CLI::App& mark = addHistoryCommand(app, options, Options::MARK_READ, "mark-read",
                                       "Mark missed calls as seen, all of them unless a row is named");
    addRow(mark, options, *mark.add_option_group("Row")->require_option(0, 1));

    CLI::App& erase = addHistoryCommand(app, options, Options::DELETE, "delete", "Delete a row with all its calls");
    CLI::App& choice = *erase.add_option_group("Row");
    choice.require_option(1);
    addRow(erase, options, choice);
    choice.add_flag("--all", options.all, "All of the history");
}

void addSearch(CLI::App& app, Options& options)
{
    CLI::App& search = *app.add_subcommand("search", "Look for people among the own ones and in a directory");
    search.callback([&options] { options.command = Options::SEARCH; });
    CLI::Option* text = search.add_option("TEXT", options.text, "Beginnings of words, digits of a number, or keys");
    check(text->type_name("")->required(), "text", isNotEmpty);
    CLI::Option* ldap =
        search.add_option("--ldap", options.ldap, "How to reach an LDAP directory (docs/directory-search.md)");
    check(ldap->type_name("FILE"), "file", isPath);
    CLI::Option* save =
        search.add_option("--save", options.resultToSave, "Store this result, counted from 1, as a contact");
    check(save->type_name("N"), "result; the first one is 1", isRow);
    addAppearance(search, options);
    addDataFolder(search, options);
    addSettings(search, options);
}

CLI::App& addContactCommand(CLI::App& contact, Options& options, Options::Command command, const std::string& name,
                            const std::string& description)
{
    CLI::App& added = *contact.add_subcommand(name, description);
    added.callback([&options, command] { options.command = command; });
    added.add_flag("--json", options.json, "Print one JSON object a contact");
    addDataFolder(added, options);
    return added;
}

void addContactFields(CLI::App& command, Options& options)
{
    for (const ContactField& field : CONTACT_FIELDS)
    {
        if (field.isOfPerson)
        {
            const std::string name = field.name;
            command
                .add_option_function<std::string>(
                    "--" + name, [&options, name](const std::string& value) { options.contactFields[name] = value; },
                    field.meaning)
                ->type_name("TEXT")
                ->check([](const std::string& value) { return faultOfText(value); });
        }
    }
}

void addContactId(CLI::App& command, Options& options)
{
    CLI::Option* id = command.add_option("--id", options.contactId, "The contact, by the id that list shows");
    check(id->type_name("ID")->required(), "contact", isNotEmpty);
}

void addContact(CLI::App& app, Options& options)
{
    CLI::App& contact = *app.add_subcommand("contact", "Look at the phonebook, add, change or remove a contact");
    contact.require_subcommand(1);
    addContactCommand(contact, options, Options::CONTACT_LIST, "list", "Print all contacts");
    addContactFields(addContactCommand(contact, options, Options::CONTACT_ADD, "add", "Add a contact"), options);

    CLI::App& change = addContactCommand(contact, options, Options::CONTACT_CHANGE, "change",
                                         "Change what is told of a contact; \"\" takes a name or a number away");
    addContactId(change, options);
    addContactFields(change, options);

    addContactId(addContactCommand(contact, options, Options::CONTACT_REMOVE, "remove", "Remove a contact"), options);
}

/** "" when there is none. */
std::filesystem::path userDataFolder()
{
    const char* data = std::getenv("XDG_DATA_HOME");
    if (data != nullptr && std::filesystem::path(data).is_absolute())
    {
        return data;
    }
    const char* home = std::getenv("HOME");
    const bool hasHome = home != nullptr && std::filesystem::path(home).is_absolute();
    return hasHome ? std::filesystem::path(home) / ".local" / "share" : std::filesystem::path();
}

void addReplay(CLI::App& app, Options& options)
{
    CLI::App& replay = *app.add_subcommand("replay", "Apply a trace and print the conversation list as the screen "
                                                     "shows it");
    replay.callback([&options] { options.command = Options::REPLAY; });
    addTrace(replay, options);
    replay.add_flag("--each", options.afterEachEvent, "Print the list after every event, not only at the end");
    addAppearance(replay, options);
    CLI::Option* record = replay.add_option("--record", options.record,
                                            "Write everything that happens into this file, settings and all: a "
                                            "trace that shows the same rows anywhere");
    check(record->type_name("FILE"), "file (the list goes to standard output)", isPath);
    addDataFolderOrNone(replay, options);
    addSettings(replay, options);
    replay.footer("Events: settings, " + EventCatalogue::all().names() + "\n(docs/trace.md describes them)");
}

void addExplain(CLI::App& app, Options& options)
{
    CLI::App& explain = *app.add_subcommand("explain", "Apply a trace and tell why the items of a row stand together");
    explain.callback([&options] { options.command = Options::EXPLAIN; });
    addTrace(explain, options);
    CLI::Option* row = explain.add_option("--row", options.row, "The row, counted from 1 as replay shows them");
    check(row->type_name("N")->required(), "row; the first one is 1", isRow);
    addDataFolderOrNone(explain, options);
    addSettings(explain, options);
}

template <typename Setting>
void replace(Setting& setting, const std::optional<Setting>& other)
{
    setting = other.value_or(setting);
}
} // namespace

TelephoneSettings Options::over(TelephoneSettings settings) const
{
    replace(settings.timeZone, timeZone);
    replace(settings.numbers.region, country);
    replace(settings.numbers.areaCode, areaCode);
    replace(settings.numbers.outsideLinePrefix, outsidePrefix);
    replace(settings.language, language);
    replace(settings.timeFormat, timeFormat);
    replace(settings.dateFormat, dateFormat);
    return settings;
}

std::filesystem::path Options::dataFolder() const
{
    if (fresh)
    {
        return {};
    }
    const std::filesystem::path folder = data ? std::filesystem::path(*data) : userDataFolder() / "deskphone";
    if (!data && folder.is_relative())
    {
        throw std::runtime_error("there is no folder for history and contacts: give one with --data, or set HOME");
    }
    return folder;
}

std::optional<Options> parseOptions(int argc, char** argv, ExitCode& exitCode)
{
    Options options;
    CLI::App app("deskphone - an IP desk telephone's conversation list, driven from outside", "deskphone");
    app.set_help_flag();
    app.set_help_all_flag("-h,--help", "Print this and exit");
    CLI::Option* level = app.add_option("--log", options.logLevel,
                                        "Write log lines up to this level to stderr: 0 none, 2 failures, 6 all");
    check(level->type_name("LEVEL"), "level from 0 to 6", isLogLevel);
    app.add_flag("--log-plain", options.logPlain, "Names and numbers in the log as they are, without pseudonyms");
    app.fallthrough();
    app.require_subcommand(1);
    app.footer(EXAMPLES);
    addReplay(app, options);
    addExplain(app, options);
    addHistoryCommands(app, options);
    addSearch(app, options);
    addContact(app, options);
    try
    {
        app.parse(argc, argv);
        return options;
    }
    catch (const CLI::ParseError& error)
    {
        exitCode = app.exit(error) == 0 ? ALL_WENT_WELL : FAILED;
        return std::nullopt;
    }
}
} // namespace Deskphone
