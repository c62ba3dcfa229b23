#include "host/internal/MessageCatalogue.h"

#include <cstdint>

namespace Host
{
namespace
{
constexpr std::uint32_t MAGIC = 0x950412DEU;
constexpr std::uint32_t SWAPPED_MAGIC = 0xDE120495U;
constexpr std::uint64_t WORD = 4;
constexpr std::uint64_t HEADER_WORDS = 7;

/** A .mo file: 32-bit words in the byte order that its first word shows. Offsets and lengths are in bytes. */
class Catalogue
{
  public:
    explicit Catalogue(const std::vector<char>& file) : file_(file) {}

    bool isSound();

  private:
    bool holds(std::uint64_t offset, std::uint64_t bytes) const
    {
        return offset <= file_.size() && bytes <= file_.size() - offset;
    }

    std::uint32_t word(std::uint64_t offset) const;
    bool textsAreSound(std::uint64_t table, std::uint64_t count) const;
    bool hashTableIsSound(std::uint64_t table, std::uint64_t size, std::uint64_t count) const;

    const std::vector<char>& file_;
    bool bigEndian_ = false;
};

bool isPrime(std::uint64_t number)
{
    for (std::uint64_t divisor = 2; divisor * divisor <= number; ++divisor)
    {
        if (number % divisor == 0)
        {
            return false;
        }
    }
    return number > 1;
}

std::uint32_t Catalogue::word(std::uint64_t offset) const
{
    std::uint32_t value = 0;
    for (std::uint64_t byte = 0; byte < WORD; ++byte)
    {
        const std::uint64_t at = offset + (bigEndian_ ? byte : WORD - 1 - byte);
        value = (value << 8U) | static_cast<unsigned char>(file_[at]);
    }
    return value;
}

/** A table of texts is one of lengths and offsets; each text ends with a zero byte that its length leaves out. */
bool Catalogue::textsAreSound(std::uint64_t table, std::uint64_t count) const
{
    if (!holds(table, count * 2 * WORD))
    {
        return false;
    }
    for (std::uint64_t index = 0; index < count; ++index)
    {
        const std::uint64_t length = word(table + index * 2 * WORD);
        const std::uint64_t offset = word(table + (index * 2 + 1) * WORD);
        if (!holds(offset, length + 1) || file_[offset + length] != '\0')
        {
            return false;
        }
    }
    return true;
}

/** A look-up steps through the table until it meets an empty place: with a prime size it comes to every place. */
bool Catalogue::hashTableIsSound(std::uint64_t table, std::uint64_t size, std::uint64_t count) const
{
    if (size == 0)
    {
        return true; // there is none
    }
    if (size < 3 || !holds(table, size * WORD) || !isPrime(size))
    {
        return false;
    }
    bool hasEmptyPlace = false;
    for (std::uint64_t index = 0; index < size; ++index)
    {
        const std::uint32_t text = word(table + index * WORD);
        if (text > count)
        {
            return false;
        }
        hasEmptyPlace = hasEmptyPlace || text == 0;
    }
    return hasEmptyPlace;
}

bool Catalogue::isSound()
{
    if (!holds(0, HEADER_WORDS * WORD))
    {
        return false;
    }
    bigEndian_ = word(0) == SWAPPED_MAGIC;
    const std::uint64_t count = word(2 * WORD);
    return word(0) == MAGIC && textsAreSound(word(3 * WORD), count) && textsAreSound(word(4 * WORD), count) &&
           hashTableIsSound(word(6 * WORD), word(5 * WORD), count);
}
} // namespace

bool isSoundCatalogue(const std::vector<char>& file)
{
    return Catalogue(file).isSound();
}
} // namespace Host
