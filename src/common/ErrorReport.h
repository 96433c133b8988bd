#pragma once

class Dialogs;
class NumberedError;

// The suite's report of a database step that failed: the engine's number and text.
void showErrorReport(Dialogs &dialogs, const NumberedError &error);
