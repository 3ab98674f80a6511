// A data layer that costs as little as one can: groups, or resources, in memory, announced by calls on the subscriber
// itself.
#pragma once

#include "framework/com/Bstr.h"
#include "framework/com/ComPtr.h"

#include <KorvaneData.h>
#include <KorvaneDlg.h>

#include <vector>

namespace korvane::bench
{

/// What the data layer holds, and when it was asked. Lives longer than the COM objects that stand for it.
class MemoryData
{
public:
    MemoryData();
    MemoryData(const MemoryData&) = delete;
    MemoryData& operator=(const MemoryData&) = delete;
    ~MemoryData();

    /// Makes it hold this many groups, and resources of the same names.
    void resize(int groups);
    const std::vector<Bstr>& texts() const noexcept { return texts_; }

    IRoot* root() const noexcept { return root_.get(); }

    /// Announces a group to the subscriber of the moment.
    void announce(long id, BSTR name) const;
    bool hasSubscriber() const noexcept;

    /// The seconds between opening and closing the last step of reading.
    double lastStep() const noexcept { return stepEnd_ - stepStart_; }

    /// The position that was stored last.
    long lastPosition() const noexcept { return lastPosition_; }

private:
    class Groups;
    class Names;
    class Accounts;
    class Scope;
    class Root;

    static constexpr long firstId = 4; // the system's built-in groups come before

    std::vector<Bstr> texts_;
    double stepStart_ = 0;
    double stepEnd_ = 0;
    long lastPosition_ = 0;
    ComPtr<Groups> groups_;
    ComPtr<Names> names_;
    ComPtr<Accounts> accounts_;
    ComPtr<IRoot> root_;
};

/// A command that changes groups of a data layer.
ComPtr<IEditGroups> commandFor(const MemoryData& data);
/// The same for its resources.
ComPtr<IEditNames> resourceCommandFor(const MemoryData& data);

} // namespace korvane::bench
