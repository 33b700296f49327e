#include "verify/auxiliary_label.h"

#include <algorithm>

#include "core/mdu_jz.h"

namespace gljz {
namespace {

// bcDefine4 and bcDefine6 do not count: that is intended.
bool hasUserDefinedColumns(const platform::CodeRecord& account) {
  constexpr int counted[] = {1, 2, 3, 5, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
  return std::any_of(std::begin(counted), std::end(counted),
                     [&](int column) { return account.bcDefine[static_cast<std::size_t>(column) - 1]; });
}

}  // namespace

std::string auxiliaryLabel(const platform::CodeRecord& account, std::string label) {
  struct Kind {
    bool applies;
    const char* key;
  };
  // The last one that applies names the account.
  const Kind kinds[] = {
      {account.bPersonOnly, "Orvo.GL.TqGLJZ.00243"},
      {account.bDept, "Orvo.GL.TqGLJZ.00244"},
      {account.bSup, "Orvo.GL.TqGLJZ.00245"},
      {account.bCus, "Orvo.GL.TqGLJZ.00246"},
      {account.bCusDept, "Orvo.GL.TqGLJZ.00247"},
      {account.bSupDept, "Orvo.GL.TqGLJZ.00248"},
      {!account.cItemClass.empty(), "Orvo.GL.TqGLJZ.00249"},
      {!account.cPersonItemClass.empty(), "Orvo.GL.TqGLJZ.00250"},
      {!account.cCusDeptItemClass.empty(), "Orvo.GL.TqGLJZ.00251"},
      {!account.cSupDeptItemClass.empty(), "Orvo.GL.TqGLJZ.00252"},
      {!account.cCusItemClass.empty(), "Orvo.GL.TqGLJZ.00253"},
      {!account.cSupItemClass.empty(), "Orvo.GL.TqGLJZ.00254"},
      {!account.cDeptItemClass.empty(), "Orvo.GL.TqGLJZ.00255"},
  };
  for (const Kind& kind : kinds) {
    if (kind.applies) label = GetResString(kind.key);
  }
  if (hasUserDefinedColumns(account)) label += GetResString("Orvo.GL.ZWSQL.CODEACC.00430");
  return label;
}

}  // namespace gljz
