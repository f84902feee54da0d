"""A server on 127.0.0.1 that serves one repository over HTTP only to a
request with the right Basic credentials: Git through `git http-backend`,
Mercurial through hgweb (run it with the Python that hg runs with).

    auth_server.py git|hg REPOSITORY USER PASSWORD_FILE

The password is read from its file at every request, so that a test can
change it. Git's REPOSITORY is the folder holding the bare repositories.
Prints the port it listens on, then serves until it is stopped.
"""

import base64
import os
import subprocess
import sys
from wsgiref.simple_server import WSGIRequestHandler, WSGIServer, make_server


class QuietHandler(WSGIRequestHandler):
    def log_message(self, *args):
        pass


def authorised(environ, user, password_file):
    header = environ.get('HTTP_AUTHORIZATION', '')
    if not header.startswith('Basic '):
        return False
    with open(password_file, encoding='utf-8') as stored:
        expected = user + ':' + stored.read().strip()
    return base64.b64decode(header[6:]).decode('utf-8', 'replace') == expected


def git_app(root):
    def app(environ, start_response):
        length = int(environ.get('CONTENT_LENGTH') or 0)
        body = environ['wsgi.input'].read(length) if length else b''
        cgi = {
            'GIT_PROJECT_ROOT': root,
            'GIT_HTTP_EXPORT_ALL': '1',
            'REMOTE_USER': environ['REMOTE_USER'],
            'PATH': os.environ['PATH'],
            'HOME': os.environ.get('HOME', '/'),
            'GIT_CONFIG_NOSYSTEM': '1',
        }
        for name in ('REQUEST_METHOD', 'PATH_INFO', 'QUERY_STRING', 'CONTENT_TYPE', 'REMOTE_ADDR',
                     'HTTP_CONTENT_ENCODING', 'HTTP_GIT_PROTOCOL'):
            if environ.get(name):
                cgi[name] = environ[name]
        cgi['CONTENT_LENGTH'] = str(len(body))
        result = subprocess.run(['git', 'http-backend'], input=body, env=cgi, stdout=subprocess.PIPE, check=False)
        head, _, content = result.stdout.partition(b'\r\n\r\n')
        status = '200 OK'
        headers = []
        for line in head.decode('latin-1').split('\r\n'):
            if not line:
                continue
            name, _, value = line.partition(':')
            if name.lower() == 'status':
                status = value.strip()
            else:
                headers.append((name, value.strip()))
        start_response(status, headers)
        return [content]

    return app


def hg_app(repository):
    from mercurial import ui as uimod
    from mercurial.hgweb import hgweb

    configured = uimod.ui.load()
    configured.setconfig(b'web', b'push_ssl', b'false')
    configured.setconfig(b'web', b'allow-push', b'*')
    return hgweb(repository.encode(), baseui=configured)


def main():
    kind, repository, user, password_file = sys.argv[1:5]
    inner = git_app(repository) if kind == 'git' else hg_app(repository)

    def app(environ, start_response):
        if not authorised(environ, user, password_file):
            start_response('401 Unauthorized', [('WWW-Authenticate', 'Basic realm="test"'),
                                                ('Content-Type', 'text/plain')])
            return [b'authentication required\n']
        environ['REMOTE_USER'] = user
        return inner(environ, start_response)

    server = make_server('127.0.0.1', 0, app, WSGIServer, QuietHandler)
    print(server.server_port, flush=True)
    server.serve_forever()


if __name__ == '__main__':
    main()
