#pragma once

class QString;

// The text with every character whose code in the Windows ANSI code page (1252) is 128 or more
// replaced by the keys that type it with Alt on the numeric keypad: "{NUMLOCK}%(", then
// "{NUMPADd}" for each decimal digit of its OEM (437) code, then "){NUMLOCK}". "é" (1252 code
// 233, OEM code 130) becomes "{NUMLOCK}%({NUMPAD1}{NUMPAD3}{NUMPAD0}){NUMLOCK}". A character
// with no OEM code is typed as its unaccented letter or as "?" (CodePages::oemCode).
// Characters below 128 are kept as they are, including "+", "^", "%", "~", "(" and braces,
// which a key string reads as notation; characters the ANSI code page lacks are kept too.
QString expandExtendedCharacters(const QString &text);
