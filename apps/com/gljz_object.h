#pragma once
// The class clsGLJZ as a COM object: a dual interface, so that compiled hosts call by slot and scripts by name.

#include "pointer.h"

namespace com {

Pointer<IDispatch> newGljzObject();

}  // namespace com
