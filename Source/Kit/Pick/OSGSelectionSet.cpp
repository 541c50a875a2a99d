#include "OSGSelectionSet.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace OSG
{
namespace
{
/// Paths that lie elsewhere: a copy of a path takes a block and counts references.
class PathsSeen
{
  public:
    explicit PathsSeen(std::size_t count) { _paths.reserve(count); }

    /// False for a path that was added before.
    bool add(NodePath const &path) { return _paths.insert(&path).second; }
    bool contains(NodePath const &path) const { return _paths.count(&path) != 0; }

  private:
    struct Hash
    {
        std::size_t operator()(NodePath const *path) const { return path->hash(); }
    };
    struct Equal
    {
        bool operator()(NodePath const *a, NodePath const *b) const { return *a == *b; }
    };
    std::unordered_set<NodePath const *, Hash, Equal> _paths;
};
} // namespace

SelectionSet::Observer::~Observer() = default;
SelectionSet::SelectionSet() = default;
SelectionSet::~SelectionSet() = default;

std::vector<NodePath> SelectionSet::getPaths() const
{
    std::vector<NodePath> paths;
    paths.reserve(size());
    forEach([&paths](NodePath const &path) { paths.push_back(path); });
    return paths;
}

// --- changes ---

bool SelectionSet::lets(Item const &item) const
{
    return item.path.getNode() != nullptr && (item.kinds & _filter.kinds) != 0 &&
           (!_filter.accepts || _filter.accepts(item.path));
}

bool SelectionSet::replace(Items const &items)
{
    Change change;
    PathsSeen wanted(items.size());
    for(Item const &item : items)
    {
        if(lets(item) && wanted.add(item.path) && !contains(item.path))
            change.came.push_back(item.path);
    }
    forEach(
        [&](NodePath const &path)
        {
            if(!wanted.contains(path))
                change.went.push_back(path);
        });
    return apply(std::move(change));
}

bool SelectionSet::add(Items const &items)
{
    Change change;
    PathsSeen seen(items.size());
    for(Item const &item : items)
    {
        if(lets(item) && !contains(item.path) && seen.add(item.path))
            change.came.push_back(item.path);
    }
    return apply(std::move(change));
}

bool SelectionSet::toggle(Items const &items)
{
    Change change;
    PathsSeen seen(items.size());
    for(Item const &item : items)
    {
        bool const goes = contains(item.path);
        if((goes || lets(item)) && seen.add(item.path))
            (goes ? change.went : change.came).push_back(item.path);
    }
    return apply(std::move(change));
}

bool SelectionSet::remove(std::vector<NodePath> const &paths)
{
    Change change;
    PathsSeen seen(paths.size());
    for(NodePath const &path : paths)
    {
        if(contains(path) && seen.add(path))
            change.went.push_back(path);
    }
    return apply(std::move(change));
}

bool SelectionSet::clear() { return apply({{}, getPaths()}); }

bool SelectionSet::prune(Node const *root)
{
    bool const wasEdited = _edits.haveCome();
    if(!wasEdited && !_hasUnpruned && root == _prunedRoot)
        return false;
    // Unless all goes well the next call has to look again.
    _hasUnpruned = true;
    Change change;
    forEach(
        [&](NodePath const &path)
        {
            if(root == nullptr || !path.isIn(root))
                change.went.push_back(path);
        });
    _prunedRoot = root;
    _hasUnpruned = false; // before the change is told: an observer may add
    try
    {
        return apply(std::move(change));
    }
    catch(...)
    {
        _hasUnpruned = true;
        throw;
    }
}

bool SelectionSet::apply(Change &&change)
{
    if(change.came.empty() && change.went.empty())
        return false;
    bool const isTold = !_observers.empty();
    if(isTold)
        _untold.emplace_back(); // nothing that comes after the insertion may fail
    try
    {
        insert(change.came);
    }
    catch(...)
    {
        if(isTold)
            _untold.pop_back();
        throw;
    }
    for(NodePath const &path : change.went)
        erase(path);
    compact();
    _hasUnpruned = _hasUnpruned || !change.came.empty();
    if(isTold)
    {
        _untold.back() = std::move(change);
        tell();
    }
    return true;
}

void SelectionSet::insert(std::vector<NodePath> const &paths)
{
    std::size_t const begin = _order.size();
    try
    {
        if(paths.size() > size()) // otherwise the table grows as it does by itself
            _places.reserve(size() + paths.size());
        for(NodePath const &path : paths)
        {
            _order.push_back(nullptr);
            _order.back() = &_places.emplace(path, _order.size() - 1).first->first;
        }
    }
    catch(...)
    {
        for(std::size_t i = begin; i < _order.size(); ++i)
        {
            if(_order[i] != nullptr)
                _places.erase(_places.find(*_order[i]));
        }
        _order.resize(begin);
        throw;
    }
}

void SelectionSet::erase(NodePath const &path)
{
    auto const place = _places.find(path);
    _order[place->second] = nullptr;
    _places.erase(place);
}

// Gaps cost as much as paths, so at most half of the order may be gaps.
void SelectionSet::compact()
{
    if(_order.size() <= 2 * size())
        return;
    std::size_t next = 0;
    for(NodePath const *path : _order)
    {
        if(path == nullptr)
            continue;
        _places.find(*path)->second = next;
        _order[next++] = path;
    }
    _order.resize(next);
}

// --- observers ---

void SelectionSet::addObserver(Observer *observer)
{
    bool const isThere =
        std::find(_observers.begin(), _observers.end(), observer) != _observers.end();
    if(observer != nullptr && !isThere)
        _observers.push_back(observer);
}

void SelectionSet::removeObserver(Observer *observer)
{
    auto const place = std::find(_observers.begin(), _observers.end(), observer);
    if(observer == nullptr || place == _observers.end())
        return;
    if(_isTelling)
        *place = nullptr;
    else
        _observers.erase(place);
}

void SelectionSet::tell()
{
    if(_isTelling)
        return;
    struct Telling
    {
        SelectionSet &set;
        ~Telling()
        {
            set._isTelling = false;
            std::erase(set._observers, nullptr);
        }
    };
    _isTelling = true;
    Telling const telling{*this};
    while(!_untold.empty())
    {
        Change const change = std::move(_untold.front());
        _untold.pop_front();
        tellOne(change);
    }
}

// Those that are added meanwhile stand behind the ones that hear of this change.
void SelectionSet::tellOne(Change const &change)
{
    std::size_t const count = _observers.size();
    for(std::size_t i = 0; i < count; ++i)
    {
        if(_observers[i] != nullptr)
            _observers[i]->selectionChanged(*this, change);
    }
}
} // namespace OSG
