#pragma once

#include <string>
#include <vector>

#include "OSGUtilApi.h"

namespace OSG
{
/// The parameters of a graph operation, out of one string, which may hold anything.
///
/// The string is words with blanks or commas between them. A word is `key=value`, where a value is
/// true, false, 1 or 0, or a key alone, which stands for `key=true`. An operation asks for the keys
/// that it knows; the words that nobody asked for, or whose value is none, remain.
class OSG_UTIL_API GraphOpParamSet
{
  public:
    explicit GraphOpParamSet(std::string const &params);
    GraphOpParamSet(GraphOpParamSet const &) = default;
    GraphOpParamSet &operator=(GraphOpParamSet const &) = default;
    ~GraphOpParamSet();

    /// Writes the value of `key` where the key occurs with one, and tells whether it does; of
    /// several the last one counts, and all of them are used.
    bool operator()(char const *key, bool &value);
    /// The words that were not used, as written and in their order, a blank between two; empty
    /// where all were used.
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
