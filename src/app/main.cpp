// SPDX-License-Identifier: MIT
#include "app/Ostrel.h"

int main(int argc, char **argv) { return ostrel::runOstrel(argc, argv); }
