/**
 * Makes texts that people take for the same the same: letters without case and accents, digits, nothing else.
 *
 * "Łukasz Müller-O’Brien" becomes " lukasz muller obrien": every word has a blank before it. In digits of a keypad it
 * is " 585279 685537 627436"; there letters of other scripts count as their Latin spelling. Foldings of characters are
 * remembered. UI thread only.
 */
#pragma once

#include "ConversationAPI/TextRange.h"

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ConversationAPI
{
enum class Alphabet
{
    LETTERS,
    KEYPAD
};

struct FoldedText
{
    std::string text;
    std::vector<TextRange> sources; ///< for each byte of the text, the part of the original that it comes from
};

class TextFolding
{
  public:
    TextFolding();
    ~TextFolding();

    TextFolding(const TextFolding&) = delete;
    TextFolding& operator=(const TextFolding&) = delete;

    /** Of UTF-8; what is none separates words. Only the first thousand bytes count: nobody types more. */
    std::string fold(std::string_view text, Alphabet alphabet);
    FoldedText foldWithSources(std::string_view text, Alphabet alphabet);

  private:
    class Icu;

    /** What a character is in a folded text. */
    struct Character
    {
        enum Role
        {
            SPELLED,
            SEPARATOR,
            MARK, ///< nothing by itself, but part of what stands before it
        };

        Role role = SEPARATOR;
        std::array<std::string, 2> spellings; ///< by alphabet
    };

    template <typename Sink>
    void foldInto(Sink& sink, std::string_view text, Alphabet alphabet);
    const Character& character(int codePoint);

    const std::unique_ptr<Icu> icu_;
    std::array<Character, 128> ascii_;
    std::unordered_map<int, Character> others_;
};
} // namespace ConversationAPI
