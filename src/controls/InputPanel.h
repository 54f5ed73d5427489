// The on-screen keyboard, where the platform has one.
#pragma once

void RaiseInputPanel();
void LowerInputPanel();
