from ._core import *
from ._tags import tags as tags
