// The module, initialised for the length of a test.
#pragma once

#include <gtest/gtest.h>

#include "generated/QLProtocol/QLProtocol.h"

class Module : public testing::Test {
  protected:
    Module() { Quillon::initialize(); }
    ~Module() override { Quillon::finalize(); }
};
