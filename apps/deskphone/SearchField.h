/**
 * The search field of the screen: what stands in it and what was found.
 *
 * Found conversations are known by their ids and looked up when they are shown. UI thread only.
 */
#pragma once

#include "ConversationAPI/SearchResultsReceiver.h"

#include <string>
#include <unordered_set>
#include <vector>

namespace Deskphone
{
class SearchField : public ConversationAPI::SearchResultsReceiver
{
  public:
    struct Result
    {
        std::string conversationId;
        SearchResultsType type; ///< of the answer in which it came first
    };

    /** Another text, of which nothing is known yet; "" closes the field. */
    void begin(const std::string& text)
    {
        text_ = text;
        found_.clear();
        known_.clear();
        isSearching_ = !text.empty();
    }

    void receiveSearchResults(const std::vector<std::string>& conversationIds, SearchResultsType type) override
    {
        for (const std::string& id : conversationIds)
        {
            if (known_.insert(id).second)
            {
                found_.push_back({id, type});
            }
        }
    }

    void receiveSearchEnded() override { isSearching_ = false; }

    const std::string& text() const { return text_; }

    /** In the order in which they are shown. */
    const std::vector<Result>& found() const { return found_; }

    /** Whether more may come. */
    bool isSearching() const { return isSearching_; }

  private:
    std::string text_;
    std::vector<Result> found_;
    std::unordered_set<std::string> known_; ///< their ids
    bool isSearching_ = false;
};
} // namespace Deskphone
