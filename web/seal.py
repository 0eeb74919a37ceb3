#!/usr/bin/python3
"""Seals the one-file page that emscripten wrote and writes the site beside it.

The page asks the network for nothing; sealed, the browser holds it to that. Its
Content-Security-Policy lets it run its own inline script and style (named by their hashes) and
WebAssembly made from its own bytes, and nothing else: no connection, no script, style, image
or frame from anywhere. Links still open in a new tab, which no policy of this page governs.

The site is the same page as index.html, for any static host: a web app manifest (the game's
names, its icon drawn from the window's SVG at the sizes browsers ask for, the window's colour,
standalone, either way round) and a service worker that keeps the site for offline play and
takes a new version when the site has one.

   web/seal.py PAGE ICON_SVG SITE_DIR        (the page is sealed in place)
"""
import base64
import hashlib
import json
import os
import re
import subprocess
import sys

NAME, SHORT_NAME = 'Free Quorvel', 'Quorvel'
ICON_SIZES = (192, 512)
# Everything the page and the site ask for besides their own inline script and style.
# Emscripten's loader fetches the WebAssembly from the page's own data: address before it
# decodes it by hand: allowed, lest every load log a refusal; no address of a network is.
POLICY = ("default-src 'none'; script-src {scripts} 'wasm-unsafe-eval'; style-src {styles}; "
          "img-src 'self'; manifest-src 'self'; worker-src 'self'; connect-src data:; "
          "frame-src 'none'; object-src 'none'; base-uri 'none'; form-action 'none'")
POLICY_TAG = '<meta http-equiv="Content-Security-Policy" content="{}">\n'
# The service worker is registered only where there is one: not from a file.
REGISTER = ("if ('serviceWorker' in navigator && location.protocol !== 'file:') "
            "navigator.serviceWorker.register('sw.js');")

SERVICE_WORKER = '''// Keeps the site for offline play: every file on installing, each request answered from the
// copy kept. A new site has a new version here, so the browser installs it afresh; the old
// copy goes once the new one takes over.
'use strict';
const kVersion = 'quorvel-{version}';
const kFiles = {files};

self.addEventListener('install', (e) => {{
  e.waitUntil(caches.open(kVersion).then((c) => c.addAll(kFiles)).then(() => self.skipWaiting()));
}});

self.addEventListener('activate', (e) => {{
  e.waitUntil(caches.keys()
    .then((keys) => Promise.all(keys.filter((k) => k !== kVersion).map((k) => caches.delete(k))))
    .then(() => self.clients.claim()));
}});

self.addEventListener('fetch', (e) => {{
  if (e.request.method !== 'GET') return;
  e.respondWith(caches.open(kVersion)
    .then((c) => c.match(e.request, {{ ignoreSearch: true }}))
    .then((kept) => kept || fetch(e.request)));
}});
'''


def digest(text):
    return "'sha256-" + base64.b64encode(hashlib.sha256(text.encode()).digest()).decode() + "'"


def sealed(html, extra_head=''):
    """`html` with `extra_head` and its policy at the top of its head; any policy it had goes."""
    html = re.sub(r'<meta http-equiv="Content-Security-Policy"[^>]*>\n', '', html)
    charset = '<meta charset="utf-8">\n'
    if charset not in html:
        sys.exit('seal.py: the page has no <meta charset="utf-8">')
    html = html.replace(charset, charset + extra_head, 1)
    scripts = re.findall(r'<script>(.*?)</script>', html, re.S)
    styles = re.findall(r'<style>(.*?)</style>', html, re.S)
    if not scripts:
        sys.exit('seal.py: the page has no script')
    policy = POLICY.format(scripts=' '.join(sorted({digest(s) for s in scripts})),
                           styles=' '.join(sorted({digest(s) for s in styles})) or "'none'")
    return html.replace(charset, charset + POLICY_TAG.format(policy), 1)


def main():
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    page, icon, site = sys.argv[1:]
    with open(page, encoding='utf-8') as f:
        html = f.read()
    with open(page, 'w', encoding='utf-8') as f:
        f.write(sealed(html))

    # The window's colour, as the page's own style has it.
    colour = re.search(r'html, body \{[^}]*background: (#[0-9a-fA-F]{6})', html)
    if not colour:
        sys.exit('seal.py: the page names no background colour')
    os.makedirs(site, exist_ok=True)
    icons = []
    for size in ICON_SIZES:
        name = f'icon-{size}.png'
        subprocess.run(['rsvg-convert', '-w', str(size), '-h', str(size), '-o',
                        os.path.join(site, name), icon], check=True)
        icons.append({'src': name, 'sizes': f'{size}x{size}', 'type': 'image/png'})
    manifest = {'name': NAME, 'short_name': SHORT_NAME, 'id': './', 'start_url': './',
                'scope': './', 'display': 'standalone', 'orientation': 'any',
                'background_color': colour.group(1), 'theme_color': colour.group(1),
                'icons': icons}
    with open(os.path.join(site, 'manifest.webmanifest'), 'w', encoding='utf-8') as f:
        json.dump(manifest, f, indent=2)
        f.write('\n')
    head = ('<link rel="manifest" href="manifest.webmanifest">\n'
            f'<meta name="theme-color" content="{colour.group(1)}">\n'
            '<link rel="icon" href="icon-192.png">\n'
            f'<script>{REGISTER}</script>\n')
    index = sealed(html, head)
    with open(os.path.join(site, 'index.html'), 'w', encoding='utf-8') as f:
        f.write(index)
    files = ['./', 'index.html', 'manifest.webmanifest'] + [i['src'] for i in icons]
    version = hashlib.sha256(index.encode() + json.dumps(manifest).encode()).hexdigest()[:16]
    with open(os.path.join(site, 'sw.js'), 'w', encoding='utf-8') as f:
        f.write(SERVICE_WORKER.format(version=version, files=json.dumps(files)))


if __name__ == '__main__':
    main()
