#pragma once

#include <string>
#include <vector>

#include "OSGUtilApi.h"

namespace OSG
{
/// The parameters of a graph operation, parsed from a string.
///
/// The string holds words, separated by blanks or commas. A word is `key=value`, where the value is
/// true, false, 1 or 0, or a key alone, which means `key=true`. An operation asks for the keys that
/// it knows. Words with unknown keys or invalid values remain unused. Any string is allowed.
class OSG_UTIL_API GraphOpParamSet
{
  public:
    explicit GraphOpParamSet(std::string const &params);
    GraphOpParamSet(GraphOpParamSet const &) = default;
    GraphOpParamSet &operator=(GraphOpParamSet const &) = default;
    ~GraphOpParamSet();

    /// Sets `value` and returns true where `key` occurs with a valid value. Where it occurs several
    /// times, the last value counts and all of these words are used.
    bool operator()(char const *key, bool &value);
    /// The words that were not used, in their order, separated by single blanks. Empty where all
    /// were used.
    std::string getUnusedParams() const;

  private:
    struct Word
    {
        std::string text;
        bool used;
    };

    std::vector<Word> _words;
};
} // namespace OSG
