"""The X display from outside: waits for windows and sends input."""
import ctypes
import subprocess
import time

MAP_NOTIFY = 19
SUBSTRUCTURE_NOTIFY = 1 << 19
pointer, number, whole = ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int
x11 = ctypes.CDLL("libX11.so.6")
xtst = ctypes.CDLL("libXtst.so.6")


def declare(function, result, *arguments):
    function.restype, function.argtypes = result, arguments


declare(x11.XOpenDisplay, pointer, pointer)
declare(x11.XDefaultRootWindow, number, pointer)
declare(x11.XSelectInput, whole, pointer, number, ctypes.c_long)
declare(x11.XNextEvent, whole, pointer, pointer)
declare(x11.XGetGeometry, whole, pointer, number, *[pointer] * 7)
declare(x11.XFlush, whole, pointer)
declare(x11.XStringToKeysym, number, ctypes.c_char_p)
declare(x11.XKeysymToKeycode, ctypes.c_ubyte, pointer, number)
declare(xtst.XTestFakeKeyEvent, whole, pointer, ctypes.c_uint, whole, number)
declare(xtst.XTestFakeButtonEvent, whole, pointer, ctypes.c_uint, whole, number)
declare(xtst.XTestFakeMotionEvent, whole, pointer, whole, whole, whole, number)
# A window may be gone before its size is read: an error must not end the bench.
ON_ERROR = ctypes.CFUNCTYPE(whole, pointer, pointer)(lambda display, error: 0)
x11.XSetErrorHandler(ON_ERROR)
display = x11.XOpenDisplay(None)
root = x11.XDefaultRootWindow(display)
x11.XSelectInput(display, root, SUBSTRUCTURE_NOTIFY)


def size(window):
    parent, x, y = ctypes.c_ulong(), ctypes.c_int(), ctypes.c_int()
    w, h, border, depth = (ctypes.c_uint() for _ in range(4))
    known = x11.XGetGeometry(display, window, *map(ctypes.byref, (parent, x, y, w, h, border, depth)))
    return (w.value, h.value) if known else (0, 0)


def start(program):
    """The process, and how many milliseconds its window took to cover the screen."""
    event = (ctypes.c_long * 24)()  # an XEvent; type, serial, sent, display, parent, window
    begin = time.perf_counter()
    wine = subprocess.Popen(["wine", program], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                            stderr=subprocess.DEVNULL)
    while True:
        x11.XNextEvent(display, event)
        if event[0] & 0xFFFFFFFF == MAP_NOTIFY and size(event[5]) == size(root):
            break
    return wine, 1000 * (time.perf_counter() - begin)


def end(wine):
    wine.kill()
    wine.wait()
    time.sleep(0.2)


# Input is sent at the next flush.
def key(letter, down):
    code = x11.XKeysymToKeycode(display, x11.XStringToKeysym(letter.encode()))
    xtst.XTestFakeKeyEvent(display, code, down, 0)


def button(down):
    xtst.XTestFakeButtonEvent(display, 1, down, 0)


def move(x, y):
    xtst.XTestFakeMotionEvent(display, -1, int(x), int(y), 0)


def flush():
    x11.XFlush(display)


def cost(what, figure, floor, goal):
    """A row of docs/cost.md."""
    print(f"cost | {what} | {figure} | {floor} | {goal}")
