#include "OSGRisingNodes.h"

#include "OSGGeometry.h"
#include "OSGNode.h"

namespace OSG
{
void RisingNodes::append(List &list, Node *node, bool takesMaterial)
{
    Piece piece;
    piece.node = node;
    piece.takesMaterial = takesMaterial;
    appendPiece(list, put(piece));
}

UInt32 RisingNodes::put(Piece const &piece)
{
    if(_firstFree == List::None)
    {
        _pieces.push_back(piece);
        return static_cast<UInt32>(_pieces.size() - 1);
    }
    UInt32 const index = _firstFree;
    _firstFree = _pieces[index].next;
    _pieces[index] = piece;
    return index;
}

void RisingNodes::giveBack(UInt32 piece)
{
    _pieces[piece].next = _firstFree;
    _firstFree = piece;
}

void RisingNodes::appendPiece(List &list, UInt32 piece)
{
    _pieces[piece].next = List::None;
    join(list, {piece, piece});
}

void RisingNodes::join(List &list, List const &tail)
{
    if(tail.empty())
        return;
    if(list.empty())
        list.first = tail.first;
    else
        _pieces[list.last].next = tail.first;
    list.last = tail.last;
}

RisingNodes::List RisingNodes::giveMaterial(List const &list, Material *material, Nodes &rest)
{
    List taking;
    UInt32 next = List::None;
    for(UInt32 i = list.first; i != List::None; i = next)
    {
        next = _pieces[i].next;
        if(_pieces[i].takesMaterial)
            appendPiece(taking, i);
        else
        {
            rest.push_back(_pieces[i].node);
            giveBack(i);
        }
    }
    if(taking.empty())
        return taking;
    Piece whole;
    whole.material = material;
    whole.inner = taking;
    whole.shared = sharedOf(taking);
    whole.takesMaterial = true;
    if(whole.shared != List::None)
    {
        for(Geometry *geometry : _shared[whole.shared])
            geometry->setMaterial(material);
    }
    UInt32 const index = put(whole);
    return {index, index};
}

// The set of geometries in the list that several nodes show.
UInt32 RisingNodes::sharedOf(List const &list)
{
    UInt32 shared = List::None;
    for(UInt32 i = list.first; i != List::None; i = _pieces[i].next)
    {
        Piece &piece = _pieces[i];
        if(piece.node == nullptr)
        {
            addShared(shared, piece.shared);
            continue;
        }
        auto *const geometry = static_cast<Geometry *>(piece.node->getCore());
        if(geometry->getParents().size() < 2)
            continue;
        piece.isShared = true;
        if(shared == List::None)
        {
            _shared.emplace_back();
            shared = static_cast<UInt32>(_shared.size() - 1);
        }
        _shared[shared].insert(geometry);
    }
    return shared;
}

// Inserts the smaller set into the larger one. An element moves only into a set of at least twice
// the size, so all unions together take n log n steps. Set `more` is empty afterwards.
void RisingNodes::addShared(UInt32 &shared, UInt32 more)
{
    if(more == List::None)
        return;
    if(shared == List::None || _shared[shared].size() < _shared[more].size())
        std::swap(shared, more);
    if(more == List::None)
        return;
    _shared[shared].insert(_shared[more].begin(), _shared[more].end());
    Shared().swap(_shared[more]);
}

RisingNodes::Nodes RisingNodes::finish(List const &list)
{
    /// A piece that is still to be visited, and the material of the outermost list around it.
    struct Open
    {
        UInt32 piece;
        bool isGiven;
        Material *material;
    };
    Nodes nodes;
    std::vector<Open, MemAllocator<Open>> open{{list.first, false, nullptr}};
    while(!open.empty())
    {
        Open const at = open.back();
        open.pop_back();
        if(at.piece == List::None)
            continue;
        Piece const piece = _pieces[at.piece];
        open.push_back({piece.next, at.isGiven, at.material});
        if(piece.node == nullptr)
            open.push_back({piece.inner.first, true, at.isGiven ? at.material : piece.material});
        else
        {
            if(at.isGiven && !piece.isShared)
                static_cast<Geometry *>(piece.node->getCore())->setMaterial(at.material);
            nodes.push_back(piece.node);
        }
        giveBack(at.piece);
    }
    return nodes;
}

void RisingNodes::clear()
{
    _pieces.clear();
    _shared.clear();
    _firstFree = List::None;
}
} // namespace OSG
