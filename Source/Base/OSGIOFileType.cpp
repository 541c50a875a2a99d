#include "OSGIOFileType.h"

#include "OSGStartUpRecord.h"

namespace OSG
{
IOFileTypeBase::IOFileTypeBase(char const *suffixes[], UInt16 sizeInBytes, bool override,
                               UInt32 overridePriority, UInt32 flags)
    : _override(override)
    , _overridePriority(overridePriority)
    , _flags(flags)
{
    for(std::size_t i = 0; i < sizeInBytes / sizeof(char const *); ++i)
    {
        if(suffixes[i] != nullptr)
            _suffixList.emplace_back(suffixes[i]);
    }
    record_start_up(StartUpKind::FileType, _suffixList.empty() ? "" : _suffixList.front().c_str());
}

IOFileTypeBase::IOFileTypeBase(IOFileTypeBase const &) = default;

IOFileTypeBase::~IOFileTypeBase() = default;

std::list<std::string> &IOFileTypeBase::suffixList() { return _suffixList; }
} // namespace OSG
