/**
 * Replaces what may tell of persons in a text by pseudonyms: "Anna Berg, 030 1234567" becomes
 * "name-5b0e91c2 name-9a77d014, num-03fe6a1b".
 *
 * Hidden: every word of two or more characters that is not part of the program's own vocabulary (states, keys of
 * the PhoneBook message and the like), every run of three or more digits, even when blanks, '-', '/', '.' or
 * brackets stand in it, and mixtures of letters and digits such as identifiers. Kept: punctuation, single ASCII
 * letters (initials show), up to two digits, ISO 8601 date-times with seconds, the vocabulary.
 *
 * One text has one pseudonym as long as the key is the same. Pseudonyms are the first 32 bits of a keyed hash:
 * without the key they cannot be tried out against a list of numbers; with it they can, so the key must not travel
 * with the log. A telephone number has one pseudonym however it is spaced; an identifier of 36 characters has that
 * of its last seven, under which conversations appear in most lines. Immutable; usable from any thread.
 */
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace Host
{
class LogPseudonyms
{
  public:
    /** With a key of its own, drawn at random: nobody can link two runs. */
    LogPseudonyms();

    /** Runs with the same key use the same pseudonyms. An empty key is as good as any other. */
    explicit LogPseudonyms(std::string_view key);

    std::string hide(std::string_view text) const;

  private:
    class Scanner;

    std::string pseudonym(const char* kind, std::string_view text) const;

    std::array<unsigned char, 32> key_;
};
} // namespace Host
