#pragma once

class QString;

// The platform family a platform identifier belongs to: "9x" for identifier 1, "NT" for any
// other.
QString platformFamilyOf(int platformId);

// The family of the platform this runs on: always "NT". The lock keys are switched the NT way,
// by sending the lock key down and up.
QString platformFamily();
