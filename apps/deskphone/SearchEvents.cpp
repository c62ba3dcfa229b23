#include "EventCatalogue.h"
#include "FieldWriter.h"
#include "PersonFields.h"
#include "Telephone.h"
#include "UserActions.h"

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

    void apply(Telephone& telephone) const override { saveFound(telephone, place_); }
    void write(FieldWriter& fields) const override { fields.number("result", place_, 1); }

  private:
    const long place_;
};

/** Somebody whom the directory knows. */
class DirectoryPerson : public Event
{
  public:
    DirectoryPerson(EventFields& fields, long) : person_(fields) {}

    void apply(Telephone& telephone) const override { telephone.people().add(person_.entry()); }
    void write(FieldWriter& fields) const override { person_.write(fields); }

  private:
    const PersonFields person_;
};

/** Somebody of whom the directory tells by itself: who calls a group, say. */
class DirectoryHit : public Event
{
  public:
    DirectoryHit(EventFields& fields, long) : searchId_(fields.requiredText("searchId")), person_(fields) {}

    void apply(Telephone& telephone) const override
    {
        DirectoryContact hit = person_.hit();
        hit.searchId = searchId_;
        telephone.directoryHit(hit);
    }

    void write(FieldWriter& fields) const override
    {
        fields.text("searchId", searchId_);
        person_.write(fields);
    }

  private:
    const std::string searchId_;
    const PersonFields person_;
};
} // namespace

void addSearchEvents(EventCatalogue& catalogue)
{
    catalogue.add<SearchTyped>("search");
    catalogue.add<FoundSaved>("search-save");
    catalogue.add<DirectoryPerson>("directory-person");
    catalogue.add<DirectoryHit>("directory-hit");
}
} // namespace Deskphone
