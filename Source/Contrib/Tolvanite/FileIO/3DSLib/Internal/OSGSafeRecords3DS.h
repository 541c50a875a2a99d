#pragma once

/// \file
/// Records of a lib3ds that was installed. The reader of this tree checks what it reads; such a
/// library does not.

#include "OSGContribTolvaniteApi.h"
#include "lib3ds.h"

namespace OSG
{
#ifdef TOLVANITE_INSTALLED_LIB3DS
inline constexpr bool HasInstalledLib3ds = true;
#else
inline constexpr bool HasInstalledLib3ds = false;
#endif

/// Makes the file safe to walk through. Faces whose vertices are not there are dropped, with one
/// warning for each mesh. Materials that are not there become none. Arrays that are null have no
/// elements, and names end. A node that stands at a second place is taken away from there, with one
/// warning for the file. The read is incomplete then.
OSG_CONTRIBTOLVANITE_API void make_records_safe(Lib3dsFile &file);
} // namespace OSG
