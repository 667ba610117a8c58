#include "util/session.h"

#include "util/thread_state.h"

namespace util {

Session& CurrentSession() {
  return ThreadState<Session>();
}

}  // namespace util
