#pragma once

#include "console/answerRun.h"

// A run that tells what a server knows of all machines (--collected).
class CollectedRun final : public AnswerRun {
public:
    using AnswerRun::AnswerRun;

private:
    void answer() override;
};
