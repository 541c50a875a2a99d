#pragma once

/// \file
/// Texts like those of modelling programs, and a function that damages them.

#include <random>
#include <string>
#include <vector>

namespace OSG::Test
{
/// Small scene files in the habits of several exporters; together they use every element.
std::vector<std::string> const &model_texts();
/// Material libraries likewise.
std::vector<std::string> const &library_texts();

/// Damages a text in one to four places: lengths, counts, indices, cut-offs, bytes, lines.
std::string hurt(std::string text, std::mt19937 &random);
} // namespace OSG::Test
