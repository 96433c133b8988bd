#include "lists/SplitDetail.h"

#include "vendor/VendorWindow.h"

void SplitDetail::toggle() {}
void SplitDetail::rowActivated(int) {}
