#pragma once
// TqGLJZ.ReferenceHost: what a script needs for a carry-forward without a ledger around it.
//
//   Set host = CreateObject("TqGLJZ.ReferenceHost")
//   host.Open "embedded:C:\ledger"
//   Set gljz = CreateObject("TqGLJZ.clsGLJZ")
//   Set gljz.ZwPubCls = host.Services("001", 2006)
//   carried = gljz.Transfer("001", "2005", "2006", parameters, host.Login("001", 2006), message, Nothing)

#include "pointer.h"

namespace com {

Pointer<IDispatch> newReferenceHost();

}  // namespace com
