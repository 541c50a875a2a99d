#include "OSGRenderAction.h"

#include "OSGActionDefaults.h"
#include "OSGFrameCollector.h"
#include "OSGNode.h"
#include "OSGNodeWalker.h"

namespace OSG
{
// --- functions by type ---

namespace
{
constinit ActionDefaults defaults;
} // namespace

void RenderAction::registerEnterDefault(FieldContainerType const &type, Functor const &function,
                                        HandlerPromise promise)
{
    defaults.registerEnter(type, function, promise);
}

void RenderAction::registerLeaveDefault(FieldContainerType const &type, Functor const &function,
                                        HandlerPromise promise)
{
    defaults.registerLeave(type, function, promise);
}

Action::FunctorStore *RenderAction::getDefaultEnterFunctors()
{
    return &defaults.resolvedEnter().functors;
}

Action::FunctorStore *RenderAction::getDefaultLeaveFunctors()
{
    return &defaults.resolvedLeave().functors;
}

// --- creation ---

RenderAction::RenderAction()
    : _collector(std::make_unique<FrameCollector>(_cache, _partition, _list))
{
    ActionDefaults::Table const &enter = defaults.resolvedEnter();
    takeEnterFunctions(enter.functors, enter.promises);
    ActionDefaults::Table const &leave = defaults.resolvedLeave();
    takeLeaveFunctions(leave.functors, leave.promises);
}

RenderAction::RenderAction(RenderAction const &source)
    : RenderActionBase(source)
    , _collector(std::make_unique<FrameCollector>(_cache, _partition, _list))
    , _headlight(source._headlight)
{
    _appearances = source._appearances;
    editDrawEnv().setSections(source.getDrawEnv().getSections());
    editDrawEnv().setLook(source.getDrawEnv().getLook());
}

RenderAction::~RenderAction() = default;

TransitPtr<RenderAction> RenderAction::create()
{
    return TransitPtr<RenderAction>(new RenderAction);
}

// --- walking ---

/// Walks for the record: stops at the nodes whose functions are called for each view.
class RenderAction::Recording
{
  public:
    explicit Recording(RenderAction &action)
        : _action(action)
    {
    }

    void operator()(SceneRecorder &recorder, Node *node)
    {
        _action._recorder = &recorder;
        Visitor visitor{{_action}, recorder, *this};
        NodeWalker().walk(node, visitor);
        _action._recorder = nullptr;
    }

  private:
    struct Visitor : Action::Visitor
    {
        SceneRecorder &recorder;
        Recording &recording;

        bool enter(Node *node)
        {
            recorder.enter(node);
            if(isRecorded(node) && Action::Visitor::enter(node))
                return true;
            recorder.leave();
            return false;
        }

        void leave(Node *node)
        {
            Action::Visitor::leave(node);
            recorder.leave();
        }

        bool isRecorded(Node const *node)
        {
            if(node->getCore() == nullptr || recording.repeats(node->getCore()->getType()) ||
               (node->getTravMask() & action.getTravMask()) == 0)
                return true;
            recorder.addOpen();
            return false;
        }
    };

    // What the action knows of a type is looked up once.
    bool repeats(FieldContainerType const &type)
    {
        if(type.getId() >= _repeats.size())
            _repeats.resize(type.getId() + 1, Unknown);
        UInt8 &known = _repeats[type.getId()];
        if(known == Unknown)
            known = _action.Action::repeats(type) ? 1 : 0;
        return known == 1;
    }

    static constexpr UInt8 Unknown = 2;

    RenderAction &_action;
    std::vector<UInt8> _repeats;
};

/// Walks for the view, where the record ends.
struct RenderAction::OpenVisitor : Action::Visitor
{
    FrameCollector &collector;

    bool enter(Node *node)
    {
        if(!collector.enterNode(node))
            return false;
        if(Action::Visitor::enter(node))
            return true;
        collector.leaveNode();
        return false;
    }

    void leave(Node *node)
    {
        Action::Visitor::leave(node);
        collector.leaveNode();
    }
};

ActionBase::ResultE RenderAction::apply(Node *node)
{
    std::vector<Node *> roots{node};
    return apply(roots.begin(), roots.end());
}

ActionBase::ResultE RenderAction::apply(std::vector<Node *>::iterator begin,
                                        std::vector<Node *>::iterator end)
{
    ResultE const started = start();
    if(started != Continue)
        return stop(started);
    try
    {
        collect(std::vector<Node *>(begin, end));
    }
    catch(...)
    {
        endWalk();
        cancel();
        throw;
    }
    endWalk();
    return stop(started);
}

// Functions and the mask decide what a walk finds.
UInt64 RenderAction::walkKey() const { return UInt64(getFunctionsNumber()) << 32 | getTravMask(); }

void RenderAction::collect(std::vector<Node *> const &roots)
{
    SceneCache::noteOpenEdits();
    for(Node *root : roots)
    {
        if(root != nullptr)
            root->updateVolume();
    }
    _cache.update(roots, walkKey(), _appearances, Recording(*this));
    _collector->begin(_appearances);
    // A function that is called for the view may edit what it stands on, but not the record.
    SceneRecord const &record = _cache.getRecord();
    for(UInt32 open = 0; open < record.opens.size(); ++open)
    {
        if(!_collector->beginOpen(open))
            continue;
        OpenVisitor visitor{{*this}, *_collector};
        NodeWalker().walk(record.entries[record.opens[open].entry].node, visitor);
    }
    _collector->finish(_headlight);
}

void RenderAction::cancel()
{
    _recorder = nullptr;
    _cache.clear();
    _list = DrawList();
}

// --- for the functions ---

Matrix RenderAction::getToRoot() const
{
    return _recorder != nullptr ? _recorder->getToRoot() : _collector->getToRoot();
}

void RenderAction::addShape(DrawShape const *shape, Material const *material)
{
    if(_recorder != nullptr)
        _recorder->addShape(shape, material);
    else
        _collector->addShape(getActNode(), shape, material);
}

void RenderAction::pushSpace(Matrix const &toParent)
{
    _recorder != nullptr ? _recorder->pushSpace(toParent) : _collector->pushSpace(toParent);
}

void RenderAction::pushMaterial(Material const *material)
{
    _recorder != nullptr ? _recorder->pushMaterial(material) : _collector->pushMaterial(material);
}

void RenderAction::pushOverriding(Material const *material)
{
    _recorder != nullptr ? _recorder->pushOverriding(material)
                         : _collector->pushOverriding(material);
}

void RenderAction::pushLight(LightSource const *light)
{
    _recorder != nullptr ? _recorder->pushLight(light) : _collector->pushLight(light);
}

void RenderAction::pop() { _recorder != nullptr ? _recorder->pop() : _collector->pop(); }

bool RenderAction::pushVisibility()
{
    ViewPlanes::Sight const sight = getActNode() != nullptr
                                        ? _collector->sightOf(getActNode()->getVolume())
                                        : ViewPlanes::Sight::Some;
    _partition.pushVisibility(sight);
    return sight != ViewPlanes::Sight::None;
}
} // namespace OSG
