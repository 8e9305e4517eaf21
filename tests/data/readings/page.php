<?php echo '<html>'; ?>
<p>source</p>
