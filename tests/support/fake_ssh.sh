#!/bin/sh
# Stands in for ssh: asks what ssh asks of a new host with a passphrase-protected
# key, through SSH_ASKPASS, then runs the remote command (its last argument) on
# this machine. Writes its session id to "session" beside itself.
[ "$1" = -G ] && exit 1
cut -d' ' -f6 /proc/$$/stat > "$(dirname "$0")/session"
[ "$SSH_ASKPASS_REQUIRE" = force ] || { echo "ssh: no askpass" >&2; exit 255; }
answer=$("$SSH_ASKPASS" "The authenticity of host 'example.test (127.0.0.1)' can't be established.
ED25519 key fingerprint is SHA256:nThbg6kXUpJWGl7E1IGOCspRomTxdCARLviKw6E5SY8.
Are you sure you want to continue connecting (yes/no/[fingerprint])? ")
[ "$answer" = yes ] || { echo "Host key verification failed." >&2; exit 255; }
passphrase=$("$SSH_ASKPASS" "Enter passphrase for key '/home/alice/.ssh/id_ed25519': ") || exit 255
[ "$passphrase" = "open sesame" ] || { echo "alice@example.test: Permission denied (publickey)." >&2; exit 255; }
for command; do :; done
exec sh -c "$command"
