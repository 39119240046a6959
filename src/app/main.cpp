// SPDX-License-Identifier: MIT
#include "app/Ostrel.h"

using namespace ostrel;

int main(int argc, char **argv) { return runOstrel(argc, argv); }
