#pragma once

#include <chrono>

namespace Tool
{
/// Measures the time since its construction.
class Stopwatch
{
  public:
    double seconds() const
    {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - _start).count();
    }

  private:
    std::chrono::steady_clock::time_point _start = std::chrono::steady_clock::now();
};
} // namespace Tool
