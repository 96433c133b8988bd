#pragma once

class Dialogs;
class DbError;

// The suite's report of a database step that failed: the engine's number and text.
void showErrorReport(Dialogs &dialogs, const DbError &error);
