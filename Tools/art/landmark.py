"""The canvas of a picture of a place, where it lies on the screen."""
from ink import Canvas

W, H = 262, 155


def P():
    return Canvas(W, H, 64, 9)
