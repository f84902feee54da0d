"""ask for HTTP credentials through Tillery

Tillery runs hg non-interactively, so that nothing ever waits on a terminal.
With this extension a remote that wants a user name or a password asks for
them anyway, through the program named in TILLERY_ASKPASS_HELPER, which
brings the question to Tillery's window. Everything else stays
non-interactive. Credentials that come with the address or from the [auth]
section are tried first; once the remote has turned them down, or when there
are none, the person is asked.
"""

import os
import subprocess

from mercurial import error, extensions, httpconnection, pycompat
from mercurial import url as urlmod
from mercurial.utils import urlutil

testedwith = b'6.3'


def _ask(prompt):
    helper = os.environ.get('TILLERY_ASKPASS_HELPER')
    if not helper:
        raise error.Abort(b'http authorization required')
    try:
        answered = subprocess.run(
            [helper, prompt],
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            check=False,
        )
    except OSError as failure:
        raise error.Abort(b'could not ask for credentials: %s' % pycompat.bytestr(failure))
    if answered.returncode != 0:
        raise error.Abort(b'authorization cancelled')
    return answered.stdout.decode('utf-8', 'replace').rstrip('\r\n')


def _knownuser(mgr, realm, authuri):
    user = mgr.passwddb.find_user_password(realm, authuri)[0]
    if user:
        return pycompat.strurl(user)
    found = httpconnection.readauthforuri(mgr.ui, authuri, None)
    if found and found[1].get(b'username'):
        return pycompat.strurl(found[1][b'username'])
    return None


def _address(authuri, user):
    address = urlutil.url(pycompat.bytesurl(authuri))
    address.query = None
    address.passwd = None
    if user:
        address.user = pycompat.bytesurl(user)
    return pycompat.strurl(bytes(address))


def find_user_password(orig, self, realm, authuri):
    # A second question for the same address in one command means that the
    # remote turned the first answer down.
    tried = self.__dict__.setdefault('_tillerytried', set())
    if (realm, authuri) not in tried:
        tried.add((realm, authuri))
        try:
            return orig(self, realm, authuri)
        except error.Abort:
            pass
    user = _knownuser(self, realm, authuri)
    if not user:
        user = _ask("Username for '%s': " % _address(authuri, None))
    passwd = _ask("Password for '%s': " % _address(authuri, user))
    self.passwddb.add_password(realm, authuri, user, passwd)
    return (user, passwd)


def uisetup(ui):
    extensions.wrapfunction(urlmod.passwordmgr, 'find_user_password', find_user_password)
