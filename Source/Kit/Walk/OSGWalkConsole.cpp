#include "OSGWalkConsole.h"

#include <algorithm>
#include <new>
#include <sstream>

#include "OSGFieldText.h"
#include "OSGFinite.h"
#include "OSGInputPlayer.h"
#include "OSGLog.h"
#include "OSGMatrixUtility.h"

namespace OSG
{
namespace
{
using Store = WalkConsoleAttachment;

/// The values of a field, as everybody may read them. The text of a number has all of its bits.
template <class Value>
std::vector<Value> values_of(Store const *store, UInt32 fieldId)
{
    std::vector<Value> values;
    if(store == nullptr)
        return values;
    GetFieldHandlePtr const field = store->getField(fieldId);
    for(UInt32 i = 0; i < field->size(); ++i)
    {
        std::ostringstream text;
        OutStream out(text);
        field->pushIndexedValueToStream(out, i);
        Value value{};
        if(!value_from_text(text.str().c_str(), value))
            break;
        values.push_back(value);
    }
    return values;
}

bool is_viewpoint(Pnt3f const &from, Pnt3f const &at, Vec3f const &up)
{
    Matrix view;
    return is_finite(from) && is_finite(at) && is_finite(up) && !MatrixLookAt(view, from, at, up) &&
           is_finite(view);
}
} // namespace

WalkConsole::WalkConsole(Navigator &navigator)
    : _navigator(navigator)
{
}

WalkConsole::~WalkConsole() = default;

void WalkConsole::setScene(Node *root)
{
    if(root == _scene)
        return;
    _activity = Activity::None;
    _scene = root;
}

WalkConsoleAttachment *walk_console_of(Node const *root)
{
    if(root == nullptr)
        return nullptr;
    for(Attachment *const attachment : *root->getMFAttachments())
    {
        if(auto *const store = dynamic_cast<Store *>(attachment))
            return store;
    }
    return nullptr;
}

WalkConsoleAttachment *WalkConsole::getAttachment() const { return walk_console_of(_scene); }

bool WalkConsole::canStore() const
{
    return _scene != nullptr && _navigator.getEngine() != nullptr;
}

// A new attachment hangs on the scene only when it holds something.
template <class StoreFunction>
void WalkConsole::storeBy(StoreFunction const &storeIn)
{
    if(Store *const store = getAttachment())
    {
        storeIn(*store);
        return;
    }
    UnrecordedRefPtr<Store> const store(Store::create());
    if(store == nullptr)
        throw std::bad_alloc();
    storeIn(*store);
    _scene->addAttachment(store);
}

bool WalkConsole::goTo(Viewpoint const &viewpoint)
{
    NavigatorEngine *const engine = _navigator.getEngine();
    if(engine == nullptr)
        return false;
    if(!is_viewpoint(viewpoint.from, viewpoint.at, viewpoint.up))
    {
        OSG_LOG_WARNING("WalkConsole: a stored viewpoint shows nothing\n");
        return false;
    }
    engine->set(viewpoint.from, viewpoint.at, viewpoint.up);
    if(_moved)
        _moved();
    return true;
}

// --- marks ---

bool WalkConsole::addMark(std::string const &label)
{
    if(!canStore())
        return false;
    CameraPose const pose = pose_of(*_navigator.getEngine());
    storeBy([&](Store &store) { store.addMark(pose.from, pose.at, pose.up, label, true); });
    return true;
}

bool WalkConsole::goBy(MarkStep step)
{
    Store *const store = getAttachment();
    Viewpoint mark;
    std::string label;
    return store != nullptr && _navigator.getEngine() != nullptr &&
           (store->*step)(mark.from, mark.at, mark.up, label) && goTo(mark);
}

bool WalkConsole::goToFirstMark() { return goBy(&Store::startMark); }
bool WalkConsole::goToLastMark() { return goBy(&Store::endMark); }
bool WalkConsole::goToNextMark() { return goBy(&Store::nextMark); }
bool WalkConsole::goToPreviousMark() { return goBy(&Store::prevMark); }

// The attachment knows steps only, and all but the last one lead past marks.
bool WalkConsole::goToMark(UInt32 index)
{
    Store *const store = getAttachment();
    if(index >= getMarkLabels().size() || _navigator.getEngine() == nullptr)
        return false;
    Viewpoint mark;
    std::string label;
    bool isThere = store->startMark(mark.from, mark.at, mark.up, label);
    for(UInt32 i = 0; isThere && i < index; ++i)
        isThere = store->nextMark(mark.from, mark.at, mark.up, label);
    return isThere && goTo(mark);
}

bool WalkConsole::removeMark()
{
    Store *const store = getAttachment();
    return store != nullptr && store->removeMark();
}

bool WalkConsole::clearMarks()
{
    Store *const store = getAttachment();
    if(store == nullptr || !store->hasMark(false))
        return false;
    store->clearMark();
    return true;
}

std::vector<std::string> WalkConsole::getMarkLabels() const
{
    Store const *const store = getAttachment();
    std::vector<std::string> labels = values_of<std::string>(store, Store::MarkLabelFieldId);
    // A damaged file may have labels without viewpoints.
    for(UInt32 const id : {Store::MarkFromFieldId, Store::MarkAtFieldId, Store::MarkUpFieldId})
    {
        if(store != nullptr)
            labels.resize(std::min<std::size_t>(labels.size(), store->getField(id)->size()));
    }
    return labels;
}

Int32 WalkConsole::getMarkIndex() const
{
    std::vector<Int32> const index = values_of<Int32>(getAttachment(), Store::MarkIndexFieldId);
    return index.empty() ? -1 : index.front();
}

// --- the recorded way ---

void WalkConsole::recordTick()
{
    CameraPose const pose = pose_of(*_navigator.getEngine());
    storeBy([&pose](Store &store) { store.addRecorded(pose.from, pose.at, pose.up); });
}

bool WalkConsole::startRecording()
{
    if(!canStore())
        return false;
    _activity = Activity::None;
    recordTick();
    _activity = Activity::Recording;
    _clock.restart();
    return true;
}

void WalkConsole::stopRecording()
{
    if(isRecording())
        _activity = Activity::None;
}

bool WalkConsole::clearRecording()
{
    _activity = Activity::None;
    Store *const store = getAttachment();
    if(store == nullptr || !store->hasRecorded(false))
        return false;
    store->clearRecorded();
    return true;
}

bool WalkConsole::startPlaying()
{
    _activity = Activity::None;
    Store *const store = getAttachment();
    Viewpoint first;
    if(store == nullptr || _navigator.getEngine() == nullptr ||
       !store->startRecorded(first.from, first.at, first.up) || !goTo(first))
        return false;
    _activity = Activity::Playing;
    _clock.restart();
    return true;
}

void WalkConsole::stopPlaying()
{
    if(isPlaying())
        _activity = Activity::None;
}

void WalkConsole::playTicks(UInt32 ticks)
{
    Store *const store = getAttachment();
    Viewpoint viewpoint;
    UInt32 played = 0;
    while(played < ticks && store != nullptr &&
          store->nextRecorded(viewpoint.from, viewpoint.at, viewpoint.up))
        ++played;
    bool const isThere = played == 0 || goTo(viewpoint);
    if(played < ticks || !isThere)
        stopPlaying();
}

void WalkConsole::update(Real64 seconds)
{
    if(_activity == Activity::None)
        return;
    if(!canStore())
    {
        _activity = Activity::None;
        return;
    }
    UInt32 const ticks = _clock.take(seconds, getTickTime());
    if(isPlaying())
        playTicks(ticks);
    for(UInt32 i = 0; isRecording() && i < ticks; ++i)
        recordTick();
}

std::vector<PathPoint> WalkConsole::getWay() const
{
    std::vector<Pnt3f> const from = values_of<Pnt3f>(getAttachment(), Store::RecordedFromFieldId);
    std::vector<Pnt3f> const at = values_of<Pnt3f>(getAttachment(), Store::RecordedAtFieldId);
    std::vector<PathPoint> way;
    for(std::size_t i = 0; i < std::min(from.size(), at.size()); ++i)
        way.push_back({from[i], at[i]});
    return way;
}

UInt32 WalkConsole::getTickTime() const
{
    constexpr UInt32 FirstTickTime = 100; // of a new attachment
    Store const *const store = getAttachment();
    return store != nullptr ? store->getTickTime() : FirstTickTime;
}

bool WalkConsole::setTickTime(UInt32 milliseconds)
{
    if(_scene == nullptr)
        return false;
    if(milliseconds != getTickTime())
        storeBy([milliseconds](Store &store) { store.setTickTime(milliseconds); });
    return true;
}

// --- home ---

bool WalkConsole::setHome()
{
    if(!canStore())
        return false;
    CameraPose const pose = pose_of(*_navigator.getEngine());
    storeBy(
        [&pose](Store &store)
        {
            store.setHomeFrom(pose.from);
            store.setHomeAt(pose.at);
            store.setHasHome(true);
        });
    return true;
}

bool WalkConsole::hasHome() const
{
    Store const *const store = getAttachment();
    return store != nullptr && store->getHasHome();
}

bool WalkConsole::goHome()
{
    NavigatorEngine *const engine = _navigator.getEngine();
    if(!hasHome() || engine == nullptr)
        return false;
    Pnt3f const from = getAttachment()->getHomeFrom();
    Pnt3f const at = getAttachment()->getHomeAt();
    Vec3f const choices[] = {_upward, engine->getUp(), Vec3f(0, 1, 0), Vec3f(1, 0, 0)};
    Vec3f const *const up =
        std::find_if(std::begin(choices), std::end(choices) - 1,
                     [&](Vec3f const &choice) { return is_viewpoint(from, at, choice); });
    return goTo({from, at, *up});
}
} // namespace OSG
