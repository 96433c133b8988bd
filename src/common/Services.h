#pragma once

class Clipboard;
class Clock;
class Databases;
class Dialogs;
class Processes;

// The platform pieces the areas reach through what they are given, never through globals.
struct Services {
    Dialogs &dialogs;
    Clock &clock;
    Clipboard &clipboard;
    Processes &processes;
    Databases &databases;
};
