// A small data layer in memory that is strict: it refuses what is not there, and notes what a caller must not do.
#pragma once

#include "framework/com/ComPtr.h"
#include "tests/activities/LinkedActivities.h"
#include "tests/support/Library.h"

#include <KorvaneData.h>

namespace korvane::test
{

class LinkGroupStore
{
public:
    struct Activity
    {
        Booking booking;
        std::optional<long> link = std::nullopt; ///< the id of one of the linked activities
    };

    LinkGroupStore();
    LinkGroupStore(const LinkGroupStore&) = delete;
    LinkGroupStore& operator=(const LinkGroupStore&) = delete;

    IRoot* root() const { return root_.get(); }

    /// Each single activity and each link group, in no particular order of meaning.
    std::vector<std::string> groups() const;
    /// The one of an activity.
    std::string groupOf(long id) const;

    /// What is wrong with what it holds and with what it was asked to do; empty when all is well.
    std::string complaints() const;

    /// Lets the n-th write from now on fail, counted from 0; -1 for none.
    void failWrite(int index) { failing_ = index; }
    /// Lets the next change of a link group give it another id.
    void renameGroup() { renamesGroup_ = true; }

    static const ErrorInfo injected;
    static const ErrorInfo refusal;

    std::map<long, Activity> activities;

    // The objects that stand for it, and what they do.
    static ComPtr<IRecurrence> makeRule(const Rule& rule);
    ComPtr<IEvents> makeEvents();
    ComPtr<IEventLinks> makeLinks();
    HRESULT write();
    HRESULT refuse() const;
    void complain(const std::string& complaint) { complaint_ += complaint + '\n'; }
    long add(const Activity& activity);
    std::vector<long> members(const std::optional<long>& link) const;
    /// The group's id once one of its activities has gone.
    std::optional<long> keyed(const std::optional<long>& link);
    std::optional<long> renamed(const std::optional<long>& link);

private:
    std::string complaint_;
    long nextId_ = 1;
    int failing_ = -1;
    bool renamesGroup_ = false;
    ComPtr<IRoot> root_;
};

} // namespace korvane::test
