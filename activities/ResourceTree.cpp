#include "activities/ResourceTree.h"

#include "framework/com/Boundary.h"

#include <algorithm>

namespace korvane
{

ResourceTree::ResourceTree(Surface surface, const Design& design) : tvwNames(surface, design)
{
    tvwNames.onNodeCheck = [this](TreeView::Node node) { toggled(node); };
}

std::uint64_t ResourceTree::key(long nameId, long groupId) noexcept
{
    return std::uint64_t{static_cast<std::uint32_t>(groupId)} << 32 | static_cast<std::uint32_t>(nameId);
}

void ResourceTree::clearGroups()
{
    tvwNames.Clear();
    names_.clear();
    groupsById_.clear();
    groups_.clear();
}

void ResourceTree::addGroup(long id, BSTR text)
{
    if (hasGroup(id))
        return;
    auto group = std::make_unique<Group>();
    group->id = id;
    // The tree knows the group by its address: nothing may fail once it is added.
    groups_.reserve(groups_.size() + 1);
    const auto place = groupsById_.emplace(id, group.get()).first;
    undoOnFailure(
        [&] { group->node = tvwNames.AddNode(nullptr, text, static_cast<Node*>(group.get()), false); },
        [&] { groupsById_.erase(place); });
    groups_.push_back(std::move(group));
}

void ResourceTree::clearNames()
{
    names_.clear();
    for (const auto& group : groups_)
    {
        for (const Node& name : group->names)
            tvwNames.Remove(name.node);
        group->names.clear();
    }
}

void ResourceTree::addName(long id, BSTR text, long groupId)
{
    const auto found = groupsById_.find(groupId);
    if (found == groupsById_.end() || names_.contains(key(id, groupId)))
        return;
    Group& group = *found->second;
    Node& name = group.names.emplace_back();
    undoOnFailure(
        [&] {
            name.id = id;
            name.group = &group;
            name.checked = hasName(id);
            names_.emplace(key(id, groupId), &name);
            name.node = tvwNames.AddNode(group.node, text, &name, name.checked);
        },
        [&] {
            names_.erase(key(id, groupId));
            group.names.pop_back();
        });
}

void ResourceTree::toggled(TreeView::Node changed)
{
    auto& node = *static_cast<Node*>(tvwNames.data(changed));
    const bool checked = tvwNames.Checked(changed);
    if (checked == node.checked)
        return;
    node.checked = checked;
    if (node.group)
        setName(node.id, checked);
    else
        for (const Node& name : static_cast<Group&>(node).names)
            setName(name.id, checked);
    showChoice();
}

void ResourceTree::showChoice()
{
    // Redraw is not turned off for this: a platform may take far longer then to change a node that is seen.
    for (const auto& group : groups_)
    {
        bool all = !group->names.empty();
        for (Node& name : group->names)
        {
            show(name, hasName(name.id));
            all = all && name.checked;
        }
        show(*group, all);
    }
}

void ResourceTree::show(Node& node, bool checked)
{
    if (node.checked == checked)
        return;
    node.checked = checked;
    tvwNames.setChecked(node.node, checked);
}

void ResourceTree::select(long nameId, long groupId)
{
    if (const auto found = names_.find(key(nameId, groupId)); found != names_.end())
        tvwNames.select(found->second->node);
}

} // namespace korvane
