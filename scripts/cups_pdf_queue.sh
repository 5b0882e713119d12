#!/usr/bin/env bash
# Makes sure a CUPS scheduler is running and has the virtual PDF printer
# (printer-driver-cups-pdf) that the printing tests send real jobs to.
# Needs root to start the scheduler or add the queue; without it, it only
# reports what is missing. Exit 0 when the queue is ready.
set -u
QUEUE=VelmarindaPDF
PPD=/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd
running() { lpstat -r 2>/dev/null | grep -q 'scheduler is running'; }

if ! running; then
  if [ "$(id -u)" -ne 0 ] || [ ! -x /usr/sbin/cupsd ]; then
    echo "cups_pdf_queue: the CUPS scheduler is not running and can't be started here" >&2
    exit 1
  fi
  /usr/sbin/cupsd || true
  for _ in $(seq 50); do running && break; sleep 0.2; done
  if ! running; then
    echo "cups_pdf_queue: cupsd did not start" >&2
    exit 1
  fi
fi
if ! lpstat -v "$QUEUE" >/dev/null 2>&1; then
  if [ "$(id -u)" -ne 0 ] || [ ! -f "$PPD" ]; then
    echo "cups_pdf_queue: no queue $QUEUE and no way to add it (root and $PPD needed)" >&2
    exit 1
  fi
  lpadmin -p "$QUEUE" -v cups-pdf:/ -E -P "$PPD" 2>/dev/null || { echo "cups_pdf_queue: lpadmin failed" >&2; exit 1; }
fi
# The PostScript step goes through pdftocairo, which keeps the text of the
# embedded fonts readable in the PDF that cups-pdf writes.
if [ "$(id -u)" -eq 0 ] && ! lpoptions -p "$QUEUE" 2>/dev/null | grep -q 'pdftops-renderer=pdftocairo'; then
  lpadmin -p "$QUEUE" -o pdftops-renderer-default=pdftocairo 2>/dev/null || true
fi
exit 0
