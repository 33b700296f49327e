#pragma once
// Objects of the platform's interfaces as automation objects, for hosts and for components that the system calls. Their
// members have the names of the interfaces; result sets have those of the database client (EOF, Fields("ccode").Value).

#include <memory>

#include "platform/services.h"
#include "pointer.h"

namespace com {

// New objects; the arguments are not null.
Pointer<IDispatch> expose(std::shared_ptr<platform::Connection> connection);
Pointer<IDispatch> expose(std::shared_ptr<platform::ZwPubCls> services);
Pointer<IDispatch> expose(std::shared_ptr<platform::Login> login);
Pointer<IDispatch> expose(std::unique_ptr<platform::Recordset> rows);
// The form has to outlive the object; it is used for one call.
Pointer<IDispatch> expose(platform::Form& form);

}  // namespace com
