// The foundation object library: reference-counted objects and collections of them.
// One of the four headers of the platform that the module includes.
#pragma once

#include "foundation/disposable.h"
#include "foundation/disposable_collection.h"
#include "foundation/ptr.h"
