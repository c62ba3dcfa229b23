/**
 * The search field of the screen: what stands in it and what was found.
 *
 * Found conversations are known by their ids and looked up when they are shown. UI thread only.
 */
#pragma once

#include "ConversationAPI/SearchResultsReceiver.h"

#include <algorithm>
#include <string>
#include <vector>

namespace Deskphone
{
class SearchField : public ConversationAPI::SearchResultsReceiver
{
  public:
    /** Another text, of which nothing is known yet; "" closes the field. */
    void begin(const std::string& text)
    {
        text_ = text;
        found_.clear();
        isSearching_ = !text.empty();
    }

    void receiveSearchResults(const std::vector<std::string>& conversationIds, SearchResultsType) override
    {
        for (const std::string& id : conversationIds)
        {
            if (std::find(found_.begin(), found_.end(), id) == found_.end())
            {
                found_.push_back(id);
            }
        }
    }

    void receiveSearchEnded() override { isSearching_ = false; }

    const std::string& text() const { return text_; }

    /** In the order in which they are shown. */
    const std::vector<std::string>& found() const { return found_; }

    /** Whether more may come. */
    bool isSearching() const { return isSearching_; }

  private:
    std::string text_;
    std::vector<std::string> found_;
    bool isSearching_ = false;
};
} // namespace Deskphone
