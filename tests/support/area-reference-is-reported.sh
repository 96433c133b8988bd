#!/usr/bin/env bash
# The vendor screen's areas hold no other area: the layering check must pass a tree where an
# area holds only the shared values and functions, and where the window holds every area, and
# fail, naming the header, line and class, when an area holds another by reference, by pointer,
# by owned pointer or by copy, also in a struct of its own, in either folder.
set -euo pipefail
check=$1
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
mkdir -p "$tree/src/common" "$tree/src/lists" "$tree/src/vendorscreen" "$tree/src/reports"
cat >"$tree/src/lists/CurrentVendor.h" <<'H'
#pragma once
class CurrentVendor : public QObject {
};
H
cat >"$tree/src/lists/OpenInvoiceTotals.h" <<'H'
#pragma once
class OpenInvoiceTotals {
};
H
cat >"$tree/src/lists/InvoiceLists.h" <<'H'
#pragma once
class OpenInvoiceTotals;
class InvoiceLists {
public:
    struct Sources {
        RecordSource &invoices;
    };
private:
    const CurrentVendor &m_current;
    Sources m_sources;
    std::function<void()> m_computeTotals;
};
H
cat >"$tree/src/reports/ReportMenu.h" <<'H'
#pragma once
class ReportMenu {
};
H
cat >"$tree/src/vendorscreen/VendorDisplay.h" <<'H'
#pragma once
class VendorDisplay : public QObject
{
};
H
cat >"$tree/src/vendorscreen/VendorWindow.h" <<'H'
#pragma once
class VendorWindow : public QMainWindow {
    std::unique_ptr<InvoiceLists> m_lists;
    std::unique_ptr<VendorDisplay> m_display;
    std::unique_ptr<ReportMenu> m_reports;
};
H
if ! out=$(bash "$check" "$tree" 2>&1); then
  echo "the check failed a tree whose areas hold none of the others:"
  echo "$out"
  exit 1
fi

cat >"$tree/src/lists/SplitDetail.h" <<'H'
#pragma once
class SplitDetail {
    InvoiceLists &m_lists;
    const OpenInvoiceTotals *m_totals = nullptr;
};
H
cat >"$tree/src/vendorscreen/VendorSaver.h" <<'H'
#pragma once
class VendorSaver : public QObject {
public:
    struct Areas {
        OpenInvoiceTotals &totals;
    };
private:
    std::unique_ptr<VendorDisplay> m_display;
    ReportMenu m_reports;
    QPointer<InvoiceLists> m_lists;
};
H
if out=$(bash "$check" "$tree" 2>&1); then
  echo "the check passed a tree where areas hold others:"
  echo "$out"
  exit 1
fi
for expected in 'src/lists/SplitDetail.h:3: holds InvoiceLists, another area' \
  'src/lists/SplitDetail.h:4: holds OpenInvoiceTotals, another area' \
  'src/vendorscreen/VendorSaver.h:5: holds OpenInvoiceTotals, another area' \
  'src/vendorscreen/VendorSaver.h:8: holds VendorDisplay, another area' \
  'src/vendorscreen/VendorSaver.h:9: holds ReportMenu, another area' \
  'src/vendorscreen/VendorSaver.h:10: holds InvoiceLists, another area'; do
  grep -qF "$expected" <<<"$out" || {
    echo "the report does not say: $expected"
    echo "$out"
    exit 1
  }
done
if grep -qE 'VendorWindow.h|InvoiceLists.h|CurrentVendor' <<<"$out"; then
  echo "the window or a shared value was reported: $out"
  exit 1
fi
echo "an area holding another area reported"
