#include "EventCatalogue.h"
#include "FieldWriter.h"
#include "Telephone.h"

namespace Deskphone
{
namespace
{
constexpr long LAST_RESULT = 1'000'000;

/** What stands in the search field after a key was pressed. */
class SearchTyped : public Event
{
  public:
    SearchTyped(EventFields& fields, long) : text_(fields.text("text")) {}

    void apply(Telephone& telephone) const override { telephone.search(text_); }
    void write(FieldWriter& fields) const override { fields.text("text", text_); }

  private:
    const std::string text_;
};

class FoundSaved : public Event
{
  public:
    FoundSaved(EventFields& fields, long) : place_(fields.number("result", 1, LAST_RESULT, 1)) {}

    void apply(Telephone& telephone) const override
    {
        if (!telephone.saveFound(place_))
        {
            throw NotPossible("there is no result " + std::to_string(place_));
        }
    }

    void write(FieldWriter& fields) const override { fields.number("result", place_, 1); }

  private:
    const long place_;
};

/** Somebody whom the directory knows. */
class DirectoryPerson : public Event
{
  public:
    DirectoryPerson(EventFields& fields, long)
    {
        for (const auto& name : names())
        {
            const std::string value = fields.text(name.first);
            if (!value.empty())
            {
                person_[name.second] = value;
            }
        }
    }

    void apply(Telephone& telephone) const override { telephone.people().add(person_); }

    void write(FieldWriter& fields) const override
    {
        for (const auto& name : names())
        {
            const auto found = person_.find(name.second);
            fields.text(name.first, found == person_.end() ? "" : found->second);
        }
    }

  private:
    /** Those of a trace, and those of a directory's entry. */
    static const std::vector<std::pair<std::string, std::string>>& names()
    {
        static const std::vector<std::pair<std::string, std::string>> all = {
            {"first", "Firstname"}, {"last", "Surname"}, {"work", "Office"}, {"work2", "Office2"},
            {"mobile", "Mobile"},   {"home", "Private"}, {"email", "Email"}, {"company", "Company"},
        };
        return all;
    }

    PhonebookSearchResults::Entry person_;
};
} // namespace

void addSearchEvents(EventCatalogue& catalogue)
{
    catalogue.add<SearchTyped>("search");
    catalogue.add<FoundSaved>("search-save");
    catalogue.add<DirectoryPerson>("directory-person");
}
} // namespace Deskphone
