/** A searcher with sources that write down what they are asked, and a receiver that writes down what it is told. */
#pragma once

#include "ConversationAPI/ConversationSearcher.h"
#include "ConversationAPI/SearchResultsReceiver.h"
#include "ConversationAPI/SearchableConversationSourceIfc.h"

#include <sstream>

namespace Searching
{
using namespace ConversationAPI;
using Note = std::function<void(const std::string&)>;

/** Finds one id, made of its priority and the text. */
struct Source : SearchableConversationSourceIfc
{
    Source(int place, Note told) : priority(static_cast<unsigned>(place)), note(std::move(told)) {}
    std::string name() const { return std::to_string(priority); }
    std::vector<std::string> getMatchingConversationIds(std::string text) override
    {
        note(name() + "? " + text);
        return {name() + ":" + text};
    }
    void getMatchingConversationIds(const std::string& text, const std::string& id,
                                    ConversationSearchObserverIfc*) override
    {
        note(name() + "? " + text + " " + id);
    }
    void cancelSearch(const std::string& id) override { note(name() + "- " + id); }
    unsigned getSourceTypeWithPriority() const override { return priority; }

    unsigned priority;
    Note note;
};

struct Bench : SearchResultsReceiver
{
    /** A digit for each source. */
    explicit Bench(const std::string& priorities)
    {
        for (const char priority : priorities)
        {
            sources.push_back(std::make_unique<Source>(priority - '0', [this](const auto& text) { note(text); }));
            searcher.addSearchableConversationSource(sources.back().get());
        }
    }

    void receiveSearchResults(const std::vector<std::string>& ids, SearchResultsType type) override
    {
        note("got " + (ids.empty() ? "" : ids.front() + " ") + std::to_string(type));
    }
    void receiveSearchEnded() override { note("ended"); }

    void note(const std::string& what)
    {
        notes += (notes.empty() ? "" : ", ") + what;
        const auto reaction = reactions.extract(what);
        if (!reaction.empty())
        {
            run(reaction.mapped());
        }
    }

    /** Steps, each behind a comma; "on NOTE: STEP" does the step when the note is taken, once. */
    void run(const std::string& steps)
    {
        std::istringstream all(steps);
        for (std::string step; std::getline(all >> std::ws, step, ',');)
        {
            const std::size_t colon = step.rfind(": ");
            colon == std::string::npos ? take(step)
                                       : void(reactions[step.substr(3, colon - 3)] = step.substr(colon + 2));
        }
    }

    void take(const std::string& step)
    {
        std::istringstream words(step);
        std::string what, id, text;
        words >> what >> id >> text;
        const std::map<std::string, std::function<void()>> steps = {
            {"start", [&] { searcher.startSearch(id, text, this); }},
            {"local", [&] { searcher.startLocalSearch(id, this); }},
            {"cancel", [&] { searcher.cancelSearch(); }},
            {"results", [&] { searcher.searchResults(id, {"x"}, static_cast<SearchResultsType>(std::stoi(text))); }},
            {"end", [&] { searcher.searchEnded(id); }},
            {"network", [&] { searcher.setBroadsoftDirectorySearch(true); }},
            {"remove", [&] {
                 searcher.removeSearchableConversationSource(
                     sources[id.empty() ? sources.size() - 1 : std::stoul(id)].get());
             }}};
        steps.at(what)();
    }

    std::string notes;
    std::map<std::string, std::string> reactions;
    std::vector<std::unique_ptr<Source>> sources;
    ConversationSearcher searcher;
};
} // namespace Searching
