/**
 * The translations of a PC: gettext catalogues, read directly, so that no locale needs to exist on the machine.
 *
 * A catalogue is the file <directory>/<language>/LC_MESSAGES/conversation.mo. Its texts are patterns: "{1}" to "{9}"
 * stand for the arguments, an argument that is not given is empty. The keys that begin "Conv.List.TimeSt." are Now,
 * min, mins (one argument: the minutes and a blank, so the pattern has none there), Yesterday, Mon to Sun, and
 * month.Jan to month.Dec.
 *
 * A key that the catalogue lacks gives the arguments, one after the other, and then the key without
 * "Conv.List.TimeSt."; the screen thus still shows something sensible. Immutable after construction.
 */
#pragma once

#include "platform/TranslatorIfc.h"

#include <locale>
#include <string>

namespace Host
{
class Translator final : public TranslatorIfc
{
  public:
    /**
     * `language` is a code with or without country and encoding, in the manner of "de", "de-AT" or "de_DE.UTF-8".
     * One without catalogue gives English, with a log line.
     */
    explicit Translator(const std::string& language, const std::string& directory = defaultDirectory());

    /** Whether there is a catalogue for the language, so that it does not give English. */
    static bool speaks(const std::string& language, const std::string& directory = defaultDirectory());

    std::string translate(const TranslationInfo& info) override;

    /** The language that is spoken: "de"; "" when not even the English catalogue can be read. */
    const std::string& language() const;

    /** Where the catalogues lie that belong to this library: beside it when built, in the data folder when
     *  installed. */
    static std::string defaultDirectory();

  private:
    bool load(const std::string& language, const std::string& directory);

    std::string language_;
    std::locale messages_;
};
} // namespace Host
