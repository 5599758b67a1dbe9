#pragma once

#include "app/base/messages.h"

/// Message boxes on the screen, over the window in use. Their texts can be selected and copied.
class QtMessages : public Messages {
public:
    Answer show(const Message &message) override;
};
