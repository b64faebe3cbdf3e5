// The sizes of messages and records (SizeWalk.h) for hosts of QLProtocol, who need not know of its field lists.
#pragma once

#include "Inspect/SizeWalk.h"
#include "generated/QLProtocol/QLProtocol.fields.h"
