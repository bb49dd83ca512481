#!/bin/sh
# with-print-server.sh PROGRAM [ARGUMENT…]: runs the program beside a print server of its own, with one queue, "paper",
# that writes each job to the file $PRINTED as a PDF. Everything lies in a throw-away folder, and nothing of the
# machine's own print server is touched. Ends with the program's exit status.
set -eu

folder=$(mktemp -d)
server=
trap 'kill $server 2>/dev/null || true; wait 2>/dev/null || true; rm -rf "$folder"' EXIT
mkdir -p "$folder/server/ppd" "$folder/cache" "$folder/spool/tmp" "$folder/state/certs"

cat >"$folder/cupsd.conf" <<END
LogLevel warn
Listen $folder/socket
Browsing No
DefaultAuthType None
<Location />
  Allow all
</Location>
<Policy default>
  <Limit All>
    Allow all
  </Limit>
</Policy>
END
cat >"$folder/cups-files.conf" <<END
FileDevice Yes
ServerRoot $folder/server
CacheDir $folder/cache
RequestRoot $folder/spool
TempDir $folder/spool/tmp
StateDir $folder/state
AccessLog $folder/access.log
ErrorLog $folder/error.log
PageLog $folder/page.log
END
if [ "$(id -u)" -ne 0 ]; then
    printf 'User %s\nGroup %s\nSystemGroup %s\n' "$(id -un)" "$(id -gn)" "$(id -gn)" >>"$folder/cups-files.conf"
else
    # Its filters run as an ordinary user.
    chmod 755 "$folder"
    chgrp -R lp "$folder/cache" "$folder/spool" "$folder/state"
    chmod -R g+rwx "$folder/cache" "$folder/spool" "$folder/state"
fi
cp /usr/share/ppd/cupsfilters/Generic-PDF_Printer-PDF.ppd "$folder/server/ppd/paper.ppd"
cat >"$folder/server/printers.conf" <<END
<DefaultPrinter paper>
DeviceURI file:$folder/printed.pdf
State Idle
Accepting Yes
</DefaultPrinter>
END

/usr/sbin/cupsd -f -c "$folder/cupsd.conf" -s "$folder/cups-files.conf" >"$folder/cupsd.log" 2>&1 &
server=$!
tries=0
until CUPS_SERVER="$folder/socket" lpstat -p paper >/dev/null 2>&1; do
    tries=$((tries + 1))
    if [ $tries -gt 200 ] || ! kill -0 $server 2>/dev/null; then
        cat "$folder/cupsd.log" "$folder/error.log" >&2
        exit 1
    fi
    sleep 0.05
done
status=0
CUPS_SERVER="$folder/socket" PRINTED="$folder/printed.pdf" HOME="$folder" "$@" || status=$?
[ $status -eq 0 ] || tail -n 50 "$folder/error.log" >&2
exit $status
