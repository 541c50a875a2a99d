#include "OSGStartUpRecord.h"

#include <mutex>

namespace OSG
{
namespace
{
struct Record
{
    std::mutex guard;
    std::vector<StartUpEntry> entries;
};

// Made on first use and never destroyed, because static objects of any library write to it.
Record &record()
{
    static Record *const the = new Record;
    return *the;
}
} // namespace

void record_start_up(StartUpKind kind, char const *name)
{
    Record &all = record();
    std::lock_guard<std::mutex> const hold(all.guard);
    all.entries.push_back({kind, name != nullptr ? name : ""});
}

std::vector<StartUpEntry> start_up_record()
{
    Record &all = record();
    std::lock_guard<std::mutex> const hold(all.guard);
    return all.entries;
}
} // namespace OSG
