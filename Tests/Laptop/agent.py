#!/usr/bin/env python3
"""Runs inside, as root: takes commands from the folder that the machine outside shares (see laptop) and runs them."""
import glob, os, subprocess, sys, threading, time

folder = sys.argv[1]


def environment(user):
    env = {'PATH': '/usr/local/bin:/usr/bin:/bin:/usr/local/sbin:/usr/sbin:/sbin:/usr/games', 'LANG': 'C.UTF-8', 'USER': user}
    if user == 'root': return {**env, 'HOME': '/root'}
    env.update(HOME='/home/gull', XDG_RUNTIME_DIR='/run/user/1000', DBUS_SESSION_BUS_ADDRESS='unix:path=/run/user/1000/bus')
    if os.path.exists('/tmp/.X11-unix/X0'): env['DISPLAY'] = ':0'
    for path in glob.glob('/run/user/1000/wayland-[0-9]'): env['WAYLAND_DISPLAY'] = os.path.basename(path)
    for path in glob.glob('/run/user/1000/sway-ipc.*'): env['SWAYSOCK'] = path
    return env


def run(path):
    with open(path) as f: user, command = f.readline().strip(), f.read()
    os.unlink(path)
    base = path[:-4]
    with open(base + '.out', 'wb') as out:
        who = [] if user == 'root' else ['setpriv', '--reuid=1000', '--regid=1000', '--init-groups']
        code = subprocess.call(who + ['bash', '-c', command], stdin=subprocess.DEVNULL, stdout=out, stderr=subprocess.STDOUT,
                               env=environment(user), cwd='/root' if user == 'root' else '/home/gull', start_new_session=True)
    with open(base + '.tmp', 'w') as f: f.write(str(code))
    os.rename(base + '.tmp', base + '.done')


open(os.path.join(folder, 'ready'), 'w').close()
while True:
    for path in sorted(glob.glob(folder + '/*.cmd')):
        taken = path[:-4] + '.run'
        os.rename(path, taken)
        threading.Thread(target=run, args=(taken,), daemon=True).start()
    time.sleep(.03)
