#!/usr/bin/env python3
"""session.py SYSTEM...: plays the installed game on the laptop that `laptop boot` has started, on each SYSTEM (x11,
wayland, xwayland), and says a line for everything it looks at. The exit status is 1 if anything was not as it should.

PACE stretches all waiting (default 1): a laptop in software on a busy machine takes its time."""
import os
import re
import subprocess
import sys
import time

HERE = os.path.dirname(os.path.realpath(__file__))
PACE = float(os.environ.get('PACE', '1'))
failures = []


def run(user, command, seconds=120):
    done = subprocess.run([HERE + '/laptop', 'in', user, command], capture_output=True, text=True,
                          env={**os.environ, 'IN_S': str(int(seconds * PACE))})
    return done.returncode, done.stdout


def gull(command): return run('gull', command)[1].strip()
def root(command): return run('root', command)[1].strip()
def pad(commands): return root("python3 /tools/pad.py '%s'" % commands)
def board(commands): return root("python3 /tools/board.py '%s'" % commands)
def gamepad(commands): return root("python3 /tools/gamepad.py '%s'" % commands)


def check(what, isSo, seen=''):
    print('%s  %s%s' % ('ok  ' if isSo else 'FAIL', what, '' if isSo or seen == '' else '   (%s)' % (seen,)), flush=True)
    if not isSo: failures.append(what)
    return isSo


class State(dict):
    """The last line of the game's trace."""

    def __init__(self, line):
        time_, _, rest = line.partition(' ')
        rest, _, toast = rest.partition(' toast=')
        super().__init__(word.split('=', 1) for word in rest.split())
        self['toast'], self['time'] = toast, float(time_ or 0)

    def point(self, key): return tuple(float(n) for n in self.get(key, '0,0').split(','))
    def number(self, key): return float(self.get(key, 0))


def state(): return State(gull("grep -v frame ~/log/trace | tail -n 1"))


def until(isSo, seconds=8):
    """The first state of which isSo is true, or the last one before the time is up."""
    end = time.monotonic() + seconds * PACE
    while True:
        now = state()
        if isSo(now) or time.monotonic() > end: return now
        time.sleep(.2)


def checkUntil(what, isSo, seconds=8):
    seen = until(isSo, seconds)
    return check(what, isSo(seen), dict(seen))


def near(a, b, slack=.01): return all(abs(p - q) <= slack for p, q in zip(a, b))
def onPlot(x, y): return tuple(min(max((n - .05) / .9, 0), 1) for n in (x, y))


def startDesktop(system):
    root("echo %s >/home/gull/session; systemctl restart getty@tty1" % ('x' if system == 'x11' else 'sway'))
    name = 'openbox' if system == 'x11' else 'sway'
    for _ in range(int(120 * PACE)):
        if run('gull', 'pidof %s' % name)[0] == 0: return time.sleep(3)
        time.sleep(.5)
    raise SystemExit('the desktop does not come up')


def startGame(system, options='--seed 4', before=''):
    environment = 'SDL_VIDEODRIVER=x11' if system == 'xwayland' else ''
    gull("mkdir -p ~/log; rm -f ~/log/trace; %s (GULLWICK_TRACE=$HOME/log/trace %s setsid gullwick %s >~/log/game.log 2>&1 "
         "</dev/null; echo $? >~/log/status) >/dev/null 2>&1 & sleep .1; rm -f ~/log/status" % (before, environment, options))
    return until(lambda s: s.get('phase') == 'playing', 90)


def endGame(signal='TERM'):
    gull('pkill -%s -x gullwick' % signal)
    for _ in range(int(50 * PACE)):
        if run('gull', 'pidof -x gullwick')[0] != 0: return gull('sleep .2; cat ~/log/status')
        time.sleep(.1)
    gull('pkill -KILL -x gullwick')
    return 'killed'


def focusOther(system):
    if system == 'x11': gull("setsid xterm -T other -geometry 60x10+900+700 >/dev/null 2>&1 & sleep 1; xdotool search --sync --name '^other$' windowfocus")
    else: gull("setsid foot -T other >/dev/null 2>&1 & sleep 2; swaymsg '[title=other] floating enable, focus'")


def focusGame(system):
    if system == 'x11': gull("xdotool search --name '^Gullwick$' windowraise windowfocus")
    else: gull("swaymsg '[title=Gullwick] focus'")


def goOn(system):
    """Back in the game, and out of the pause that leaving it has begun."""
    focusGame(system)
    if until(lambda s: s['meant'] == '1')['paused'] == '0': return
    board('key p')
    until(lambda s: s['paused'] == '0')


def permission():
    device = re.search(r'/dev/input/event\d+', pad('where')).group()
    check('before the package is installed the pad may not be read', run('gull', 'head -c0 <%s' % device)[0] != 0)
    status, said = run('root', 'dpkg -i --force-depends /shared/gullwick.deb', 300)
    check('the package installs', status == 0, said[-400:])
    check('and the pad may be read at once', run('gull', 'head -c0 <%s' % device)[0] == 0)
    check('but not written to', run('gull', ': >>%s' % device)[0] != 0)
    keyboards = root("grep -l 'Lab Keyboard' /sys/class/input/event*/device/name").split('/')
    check('a keyboard may not be read', run('gull', 'head -c0 </dev/input/%s' % keyboards[4])[0] != 0)


def sweep(system):
    pad('up 0; wait .2; down 0 .5 .5; wait .3; slide 0 .3 .7 .4; wait .4')
    checkUntil('a finger captures the pointer and steers', lambda s: s['captured'] == '1' and near(s.point('coil'), onPlot(.3, .7)))
    before = state().point('target')
    board('rel 15 -15 20; wait .3')
    check('the mouse is deaf meanwhile', state().point('target') == before)
    board('key esc; wait .5')
    seen = until(lambda s: s['captured'] == '0')
    check('Escape frees the pointer, and the coil stays', seen['captured'] == '0' and seen.point('target') == before, dict(seen))
    pad('up 0')
    board('rel 12 6 20; wait .5')
    checkUntil('then the mouse steers', lambda s: s.point('target') != before)
    board('key esc; wait .3')
    pad('down 0 .5 .5; wait .3')
    checkUntil('Escape gives the pad back', lambda s: s['captured'] == '1')
    holes = state().number('holes')
    pad('up 0; wait .6; down 0 .8 .3; wait .08; up 0; wait .8')
    seen = until(lambda s: s.number('holes') > holes)
    check('a tap digs where the finger was', seen.number('holes') == holes + 1 and near(seen.point('coil'), onPlot(.8, .3), .02), dict(seen))


def focus(system):
    pad('up 0; wait .2; down 0 .5 .5; wait .3')
    focusOther(system)
    checkUntil('another window frees the pointer', lambda s: s['meant'] == '0' and s['captured'] == '0')
    checkUntil('and the beach pauses', lambda s: s['paused'] == '1')
    before = state().point('target')
    pad('slide 0 .9 .9 .3; wait .3')
    check('there a finger steers nothing', state().point('target') == before)
    focusGame(system)
    until(lambda s: s['meant'] == '1')
    pad('slide 0 .2 .2 .3; wait .3')
    seen = state()
    check('back here, it does nothing until it is lifted', seen['captured'] == '0' and seen.point('target') == before, dict(seen))
    goOn(system)
    pad('up 0; wait .2; down 0 .4 .4; wait .4')
    checkUntil('lifted and put down again it steers', lambda s: s['captured'] == '1')
    before = state().point('target')
    root('chvt 2')
    checkUntil('another terminal frees the pointer', lambda s: s['meant'] == '0')
    pad('slide 0 .9 .1 .3; wait .3')
    check('and a finger steers nothing there', state().point('target') == before)
    root('chvt 1')
    checkUntil('back on the first terminal the game is meant again', lambda s: s['meant'] == '1')
    goOn(system)
    pad('up 0; wait .2; down 0 .4 .4; wait .4')
    if system == 'x11': gull("xdotool search --name '^Gullwick$' windowminimize")
    else: gull('swaymsg workspace 2')
    checkUntil('out of sight, it frees the pointer', lambda s: s['captured'] == '0' and s['meant'] == '0')
    if system == 'x11': gull("xdotool search --name '^Gullwick$' windowmap windowfocus")
    else: gull('swaymsg workspace 1')
    focusGame(system)
    checkUntil('and is meant when it is back', lambda s: s['meant'] == '1')
    gull("pkill -x xterm; pkill -x foot")


def unplugging(system):
    pad('up 0; wait .2; down 0 .5 .5; wait .3')
    until(lambda s: s['captured'] == '1')
    pad('destroy')
    checkUntil('an unplugged pad frees the pointer and is told', lambda s: s['captured'] == '0' and 'unplugged' in s['toast'])
    before = state().point('target')
    board('rel 10 10 15; wait .4')
    checkUntil('the mouse steers then', lambda s: s.point('target') != before)
    pad('create')
    checkUntil('plugged in again, it is told', lambda s: 'plugged in' in s['toast'])
    pad('down 0 .7 .3; wait .4')
    checkUntil('and read', lambda s: s['captured'] == '1')
    pad('up 0')


def fullScreen(system):
    size = state()['size']
    board('key f11')
    checkUntil('F11 fills the screen', lambda s: s['full'] == '1' and s['size'] == '1680x1050')
    pad('up 0; wait .2; down 0 .2 .8; wait .4')
    checkUntil('where a finger steers too', lambda s: near(s.point('coil'), onPlot(.2, .8)))
    pad('up 0')
    board('key f11')
    checkUntil('and back to its old size', lambda s: s['full'] == '0' and s['size'] == size)
    if system == 'x11': return
    gull("swaymsg '[title=Gullwick] floating disable'; for i in 1 2 3; do setsid foot >/dev/null 2>&1 & sleep 1; done")
    checkUntil('in a narrow tile the whole picture is shown, smaller', lambda s: float(s['scale']) < .9)
    gull("pkill -x foot; swaymsg '[title=Gullwick] floating enable'")


def controller(system):
    gamepad('clear')
    before = state().point('target')
    gamepad('stick 1 0; wait .5; stick 0 0')
    checkUntil("a controller's stick steers", lambda s: s.point('target')[0] > before[0])
    # Toward what ticks: a dig somewhere gives a pulse for certain.
    gamepad('click south; wait 1')
    lengths = [int(n) for n in re.findall(r'length (\d+) ms', gamepad('log'))]
    check('pulses are effects with a length of their own', bool(lengths) and all(20 <= n <= 40 for n in lengths), lengths)
    check('and nothing stops them from outside', 'value 0' not in gamepad('log').split('play', 1)[-1][:40], gamepad('log')[-200:])


def sound(system):
    checkUntil('sound is open', lambda s: s['sound'] == '1')
    gull('systemctl --user restart pipewire pipewire-pulse wireplumber')
    began = time.monotonic()
    until(lambda s: s['sound'] == '0', 3)
    seen = until(lambda s: s['sound'] == '1', 12)
    check('a restarted sound server is found again (%.1f s)' % (time.monotonic() - began), seen['sound'] == '1')
    gull('pkill -STOP -f pipewire-pulse')
    before = state().number('ticks')
    time.sleep(2)
    began = time.monotonic()
    status = endGame()
    check('a hung one does not hold up the end (%.1f s, status %s)' % (time.monotonic() - began, status), status == '0')
    seen = startGame(system)
    check('nor the start', seen.get('phase') == 'playing' and seen['sound'] == '0', dict(seen))
    gull('pkill -CONT -f pipewire-pulse')
    checkUntil('it is heard once the server goes on', lambda s: s['sound'] == '1', 12)


def leaving(system):
    for signal in ('INT', 'HUP', 'TERM'):
        status = endGame(signal)
        check('SIG%s leaves as the menu does' % signal, status == '0', status)
        if signal != 'TERM': startGame(system)


def play(system):
    print('--- %s' % system, flush=True)
    startDesktop(system)
    gull('systemctl --user start pipewire pipewire-pulse wireplumber')
    seen = startGame(system)
    if not check('the game starts and plays', seen.get('phase') == 'playing', gull('tail -5 ~/log/game.log')): return
    check('on the right window system', seen['driver'] == ('wayland' if system == 'wayland' else 'x11'), seen['driver'])
    for part in (sweep, focus, unplugging, fullScreen, controller, sound, leaving):
        goOn(system)
        part(system)


def main():
    root("for each in board pad gamepad; do setsid python3 /tools/$each.py serve >/var/log/$each 2>&1 & done; sleep 3")
    permission()
    for system in ' '.join(sys.argv[1:]).split(): play(system)
    print('%d not as they should be' % len(failures) if failures else 'all as it should be')
    return 1 if failures else 0


if __name__ == '__main__': sys.exit(main())
