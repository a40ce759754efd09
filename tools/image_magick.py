"""The commands of ImageMagick under the names that Debian gives them."""
import shutil


def image_magick(tool):
    """The command for a tool such as 'convert': 'convert-im6.q16' on Debian 12, 'convert-im7.q16' on 13."""
    names = [tool + version for version in ('-im6.q16', '-im7.q16')]
    return next((name for name in names if shutil.which(name)), tool)
