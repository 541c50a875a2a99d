#pragma once

/// \file
/// The material of faces for which a file names none: light grey with a soft highlight.

#include "OSGContribTolvaniteApi.h"
#include "OSGSimpleTexturedMaterial.h"

namespace OSG
{
OSG_CONTRIBTOLVANITE_API TransitPtr<SimpleTexturedMaterial> make_obj_default();
/// Whether a material looks like that one.
OSG_CONTRIBTOLVANITE_API bool is_obj_default(Material const &material);
} // namespace OSG
