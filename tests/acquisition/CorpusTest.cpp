// SPDX-License-Identifier: MIT
#include "fuzz/Corpus.h"

#include "fuzz/StreamScenario.h"

TEST(Corpus, EveryKnownScenarioHoldsTogether) { playCorpus<StreamScenario>(QStringLiteral(STREAM_CORPUS)); }
