// The header of the protocol must compile whatever a host included before it, and must leave the host's macros alone.
#include <arpa/inet.h>
#include <math.h>
#include <netdb.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/param.h>
#include <sys/socket.h>
#include <syslog.h>
#include <termios.h>

#define OK 0
#define ERROR 0
#define DELETE 1
#define NA (-1)
#define ON 1
#define NONE 0
#define FORCE_INLINE 1
#define COLD_PATH 2
#define ALWAYS_ASSERT 3

#include "generated/QLProtocol/MsgHandler.h"
#include "generated/QLProtocol/QLProtocol.fields.h"
#include "generated/QLProtocol/QLProtocol.h"

static_assert(OK == 0 && ERROR == 0 && DELETE == 1 && NA == -1 && ON == 1, "the host's macros are as before");
static_assert(FORCE_INLINE == 1 && COLD_PATH == 2 && ALWAYS_ASSERT == 3);

#undef OK
#undef ERROR
#undef NA
#undef ON

#include <gtest/gtest.h>

TEST(MacroCollision, EnumeratorsKeepTheirNames) {
    EXPECT_EQ(Quillon::APIResult::OK, 0);
    EXPECT_EQ(Quillon::MatchStatus::ERROR, 4);
    EXPECT_EQ(Quillon::StandardTenor::NA, 0);
    EXPECT_EQ(Quillon::StandardTenor::ON, 3);
}
