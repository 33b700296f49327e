#pragma once
// The host's automation objects as the interfaces that the system asks for. Their members are called by the names that
// the interfaces give them.
//
// An object of this component's own that comes back is unwrapped. The same object gives the same adapter as long as one
// is alive, so that a connection that is the services object's own is recognised as such.

#include <memory>

#include "platform/services.h"
#include "pointer.h"

namespace com {

// Null for null.
std::shared_ptr<platform::Connection> connectionOf(const Pointer<IDispatch>& object);
std::shared_ptr<platform::ZwPubCls> servicesOf(const Pointer<IDispatch>& object);
std::shared_ptr<platform::Login> loginOf(const Pointer<IDispatch>& object);

// A result set with the members of the database client: EOF, BOF, Fields, MoveFirst, MoveNext, MovePrevious, AddNew,
// Update, Close. Fields is a collection, or is called with a name or a position, and gives a field or its value.
std::unique_ptr<platform::Recordset> recordsetOf(const Pointer<IDispatch>& object);
// A connection of the database client: State, Execute; commands are made as "ADODB.Command".
std::unique_ptr<platform::RawConnection> rawConnectionOf(const Pointer<IDispatch>& object);

// A connection of the database client, by the program id "ADODB.Connection", closed. RunTimeError 429 where it is not
// installed.
std::shared_ptr<platform::Connection> clientConnection();

// The way back: the automation object that stands for it. An adapter gives the object that it adapts; null for null.
Pointer<IDispatch> automationOf(const std::shared_ptr<platform::Connection>& connection);
Pointer<IDispatch> automationOf(const std::shared_ptr<platform::ZwPubCls>& services);
Pointer<IDispatch> automationOf(const std::shared_ptr<platform::Login>& login);

// A new object of the class of a program id, in this process or another. RunTimeError 429 when it cannot be created.
Pointer<IDispatch> createByProgramId(const std::string& programId);

}  // namespace com
