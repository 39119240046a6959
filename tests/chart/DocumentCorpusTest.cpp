// SPDX-License-Identifier: MIT
#include "fuzz/Corpus.h"
#include "fuzz/DocumentScenario.h"

TEST(DocumentCorpus, everyKnownFileHoldsTogether) { playCorpus<DocumentScenario>(QStringLiteral(DOCUMENT_CORPUS)); }
