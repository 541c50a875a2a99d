#pragma once

/// \file
/// Pictures of models of ours, made by the slow rasterizer and stored beside the tests.

#include "Oracle/PictureComparison.h"
#include "Oracle/SlowView.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
struct ModelPicture
{
    char const *model; ///< its file in Models, and the name of the picture
    ViewSetup view;
};

std::vector<ModelPicture> const &model_pictures();
/// Null where the file cannot be read.
NodePtr model_scene(ModelPicture const &picture);
/// Without pixels where there is none.
Pixels stored_pixels(ModelPicture const &picture);
/// False where it cannot be written.
bool store_pixels(ModelPicture const &picture, Pixels const &pixels);
} // namespace OSG::Test
