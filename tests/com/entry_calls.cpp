#include "entry_calls.h"

namespace com::test {

Answer transfer(_clsGLJZ* gljz, const Pointer<IDispatch>& login, const std::string& parameters, const Years& years) {
  Text account(years.account), last(years.last), current(years.current), info(parameters), message("before");
  VARIANT_BOOL returned = VARIANT_TRUE;
  Answer answer;
  answer.code = gljz->Transfer(&account, &last, &current, &info, login.get(), &message, nullptr, &returned);
  answer.returned = returned != VARIANT_FALSE;
  answer.message = message.value();
  answer.parameters = info.value();
  return answer;
}

Answer transGL(_clsGLJZ* gljz, const Pointer<IDispatch>& login, const Databases& databases) {
  Text last("2005"), current("2006"), message("before"), lastDb(databases.last), thisDb(databases.current);
  VARIANT_BOOL returned = VARIANT_TRUE;
  Answer answer;
  answer.code = gljz->TransGL(&last, &current, login.get(), &message, &lastDb, &thisDb, nullptr, nullptr, &returned);
  answer.returned = returned != VARIANT_FALSE;
  answer.message = message.value();
  return answer;
}

Answer startJz(_clsGLJZ* gljz) {
  VARIANT_BOOL returned = VARIANT_TRUE;
  Answer answer;
  answer.code = gljz->StartJz(&returned);
  answer.returned = returned != VARIANT_FALSE;
  return answer;
}

Answer transferMsg(_clsGLJZ* gljz) {
  Text message("before");
  VARIANT_BOOL returned = VARIANT_FALSE;
  Answer answer;
  answer.code = gljz->getTransferMsg(&message, &returned);
  answer.returned = returned != VARIANT_FALSE;
  answer.message = message.value();
  return answer;
}

}  // namespace com::test
