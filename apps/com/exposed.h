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

// A dialog for one call: behind it the object answers error 91, whoever has kept it.
class ExposedDialog {
public:
  explicit ExposedDialog(platform::Form& form);
  ~ExposedDialog();
  ExposedDialog(const ExposedDialog&) = delete;
  ExposedDialog& operator=(const ExposedDialog&) = delete;
  IDispatch* object() const { return object_.get(); }

private:
  Pointer<IDispatch> object_;
};

}  // namespace com
