#pragma once

/// \file
/// What the fuzz targets share.

#include <cstdio>
#include <cstdlib>
#include <string>

#include "OSGFieldContainerFactory.h"
#include "OSGMemManager.h"
#include "OSGSystem.h"

namespace OSG::Test
{
/// Ends the program if `fault` is not empty. The fuzzer then reports the input.
inline void expect_no_fault(std::string const &fault)
{
    if(fault.empty())
        return;
    std::fprintf(stderr, "fault: %s\n", fault.c_str());
    std::abort();
}

/// Checks the bounds for one input: the memory that it takes meanwhile, and that no container is
/// left at the end.
class FuzzBounds
{
  public:
    explicit FuzzBounds(UInt64 mostBytes)
        : _mostBytes(mostBytes)
        , _bytes(get_mem_bytes())
        , _containers(FieldContainerFactoryBase::the()->getNumContainers())
    {
        reset_mem_peak();
    }
    FuzzBounds(FuzzBounds const &) = delete;
    FuzzBounds &operator=(FuzzBounds const &) = delete;
    /// For what the scene shows several times.
    void allowMore(UInt64 bytes) { _mostBytes += bytes; }
    ~FuzzBounds()
    {
        if(get_mem_peak_bytes() - _bytes > _mostBytes)
            expect_no_fault("too much memory");
        if(FieldContainerFactoryBase::the()->getNumContainers() != _containers)
            expect_no_fault("containers are left");
    }

  private:
    UInt64 _mostBytes;
    UInt64 _bytes;
    UInt32 _containers;
};
} // namespace OSG::Test

extern "C" int LLVMFuzzerInitialize(int *, char ***) { return OSG::startUp() ? 0 : 1; }
