#pragma once

/// No hotkey and no binding is known any more.
void forgetHotkeys();
