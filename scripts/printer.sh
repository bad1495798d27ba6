#!/usr/bin/env bash
# Brings up, as root, the printer that the print tests print through: the
# print server with a queue "KelmarPS" that wine finds and drives with its
# PostScript driver, and a device that writes each job, as the driver made
# it, to /var/spool/kelmar/KelmarPS.ps. Does nothing, quickly, when it is
# there.
set -euo pipefail
queue=KelmarPS
output=/var/spool/kelmar/$queue.ps
backend=/usr/lib/cups/backend/kelmarfile

running() { lpstat -r 2>/dev/null | grep -q 'is running'; }

if running && lpstat -v "$queue" 2>/dev/null | grep -q "kelmarfile:$output"; then
    exit 0
fi
if [ "$(id -u)" -ne 0 ]; then
    echo "printer: the queue $queue is not there; run this as root to set it up" >&2
    exit 1
fi

# The device: the job's file, or its standard input, replaces the output
# file in one step, so a reader never sees half a job.
cat >"$backend" <<'BACKEND'
#!/bin/sh
[ $# -eq 0 ] && { echo 'file kelmarfile "Unknown" "Kelmar file"'; exit 0; }
umask 022
out=${DEVICE_URI#kelmarfile:}
if [ $# -ge 6 ]; then cat "$6"; else cat; fi >"$out.part" && mv "$out.part" "$out"
BACKEND
chmod 755 "$backend"
# Whoever runs the tests removes the last job before the next.
mkdir -p "$(dirname "$output")"
chown lp:lp "$(dirname "$output")"
chmod 0777 "$(dirname "$output")"

if ! running; then
    echo "printer: starting the print server"
    cupsd
    for _ in $(seq 50); do
        running && break
        sleep 0.2
    done
fi
# Jobs arrive in the printer's own language, so the queue passes them on
# unchanged; the server warns that such queues are deprecated.
lpadmin -p "$queue" -E -v "kelmarfile:$output" -D "Kelmar Workbench test printer" 2>/dev/null
lpadmin -d "$queue"
echo "printer: $queue prints to $output"
