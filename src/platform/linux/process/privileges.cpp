#include "platform/linux/process/privileges.h"

#include <sys/prctl.h>

namespace tarvik {

void giveUpNewPrivileges() { prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0); }

} // namespace tarvik
