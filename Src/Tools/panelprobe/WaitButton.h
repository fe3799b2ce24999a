#pragma once

class UI;

/// Asks for any key, polls without a pause until one is operated, and prints which one on standard output. Of
/// several operated at once the first of left, right, red, encoder is named.
void waitForAnyKey(UI& ui);
