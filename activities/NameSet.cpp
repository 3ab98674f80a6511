#include "activities/NameSet.h"

#include <algorithm>
#include <iterator>

namespace korvane
{

bool NameSet::add(long nameId)
{
    if (contains(nameId))
        return false;
    // The list node exists before the index takes it over: when memory runs out, nothing has changed.
    std::list<long> node{nameId};
    places_.emplace(nameId, node.cbegin());
    names_.splice(names_.end(), node);
    return true;
}

bool NameSet::remove(long nameId)
{
    const auto place = places_.find(nameId);
    if (place == places_.end())
        return false;
    names_.erase(place->second);
    places_.erase(place);
    return true;
}

void NameSet::removeFirst()
{
    if (!names_.empty())
        remove(long{names_.front()});
}

std::vector<long> NameSet::without(const NameSet& other) const
{
    std::vector<long> result;
    std::copy_if(begin(), end(), std::back_inserter(result),
                 [&](long nameId) { return !other.contains(nameId); });
    return result;
}

} // namespace korvane
